// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/removal/KnownCaches.hpp"
#include "platform/posix/UserFolders.hpp"

#include <map>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// Where a place of a `KnownCache` begins: takes "~/" off and gives the home, else the other folder.
[[nodiscard]] std::string baseOf(std::string_view& place, const std::string& home, const std::string& folder);

/// Tells which running program of this user's uses a cache. It looks at the processes once, when it is first
/// asked for a cache that any program uses. Not for several threads at once.
class CacheUsers {
public:
    /// `tree` is where proc lies.
    CacheUsers(const KernelTree& tree, const posix::UserFolders& folders)
        : m_tree(tree), m_folders(folders) {}

    /// The program's name, printable; empty where none runs.
    [[nodiscard]] std::string userOf(const KnownCache& cache);

private:
    void look();

    const KernelTree& m_tree;
    const posix::UserFolders& m_folders;
    std::optional<std::map<std::uint64_t, std::string>> m_processes; ///< their names by their numbers
};

} // namespace vantor::platform::linux
