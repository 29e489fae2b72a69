// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/workload/DesktopEntry.hpp"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform::linux {

/// The desktop entries of a user: the first folder that has one of a name holds. Not for several threads at
/// once.
class DesktopEntries {
public:
    explicit DesktopEntries(std::vector<std::string> folders) : m_folders(std::move(folders)) {}

    /// The folders `applications` of the XDG base directory rules, $XDG_DATA_HOME before $XDG_DATA_DIRS, and
    /// where Flatpak and snaps put theirs.
    static std::vector<std::string> foldersOf(const std::string& dataHome);

    /// The entry ID.desktop. What was found once is kept.
    [[nodiscard]] std::optional<DesktopEntry> find(const std::string& id);
    /// The id of the entry that starts a program of that file name; empty where none does. The first call
    /// reads every entry, some 20 µs each.
    [[nodiscard]] std::string idStarting(const std::string& program);

private:
    void readAll();

    std::vector<std::string> m_folders;
    std::map<std::string, std::optional<DesktopEntry>> m_known;
    std::map<std::string, std::string> m_programs; ///< to ids
    bool m_hasAll = false;
};

} // namespace vantor::platform::linux
