// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/LocalPaths.hpp"
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
    /// `tree` is where the kernel tells what is mounted. Folders that are not on local file systems are read
    /// by a child process, once and as a whole; one that does not answer within a second has no entries.
    DesktopEntries(std::vector<std::string> folders, const KernelTree& tree)
        : m_folders(std::move(folders)), m_paths(tree) {}

    /// The folders `applications` of the XDG base directory rules, $XDG_DATA_HOME before $XDG_DATA_DIRS, and
    /// where Flatpak and snaps put theirs.
    static std::vector<std::string> foldersOf(const std::string& dataHome);

    /// The entry ID.desktop. What was found once is kept.
    [[nodiscard]] std::optional<DesktopEntry> find(const std::string& id);
    /// The id of the entry that starts a program of that file name; empty where none does. The first call
    /// reads every entry, some 20 µs each.
    [[nodiscard]] std::string idStarting(const std::string& program);

private:
    using Entries = std::map<std::string, DesktopEntry>;
    [[nodiscard]] std::optional<DesktopEntry> read(const std::string& folder, const std::string& id);
    const Entries& distant(const std::string& folder);
    void note(const std::string& folder, const std::string& id);
    void readAll();

    std::vector<std::string> m_folders;
    LocalPaths m_paths;
    std::map<std::string, Entries> m_distant; ///< by folder, what a child read there
    std::map<std::string, std::optional<DesktopEntry>> m_known;
    std::map<std::string, std::string> m_programs; ///< to ids
    bool m_hasAll = false;
};

} // namespace vantor::platform::linux
