// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/FolderWalk.hpp"
#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/linux/removal/CacheUsers.hpp"
#include "platform/machine/CacheItem.hpp"
#include "platform/machine/Disposal.hpp"

#include <string>
#include <vector>

namespace vantor::platform::linux {

/// The user's caches: those known by name, and what else is in the cache folder. What is listed and what may
/// be deleted is found in the same way. Not for several threads at once.
class CacheList {
public:
    CacheList(const KernelTree& tree, const posix::UserFolders& folders, LocalPaths& paths)
        : m_folders(folders), m_paths(paths), m_users(tree, folders) {}

    /// Lists and sizes them all.
    [[nodiscard]] std::vector<CacheItem> take(FolderWalk& walk);

    /// Deletes what was listed, as far as it is still there, still known and not in use.
    [[nodiscard]] Removal remove(const CacheItem& item, const Disposal::KeepGoing& keepGoing);

private:
    using FoundFolder = std::function<void(int folder, const char* name, const CacheFolder&)>;
    void find(const KnownCache& cache, const FoundFolder& found);
    [[nodiscard]] CacheItem sized(const KnownCache& cache, FolderWalk& walk);
    void takeOthers(std::vector<CacheItem>& items, FolderWalk& walk) const;
    [[nodiscard]] bool mayHold(const std::string& base) const;

    const posix::UserFolders& m_folders;
    LocalPaths& m_paths;
    CacheUsers m_users;
};

} // namespace vantor::platform::linux
