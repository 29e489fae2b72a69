// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

namespace vantor::platform::linux {

/// Adds up what deleting folders would give back: the blocks of everything below them that belongs to one
/// user, on one file system. A file with several names counts when all of them were met, since it keeps its
/// blocks for as long as one is left, and blocks that a copy or a snapshot holds too do not count. Symbolic
/// links are never followed (a folder that is one counts as nothing), and other file systems mounted below
/// are left out; subvolumes of the same btrfs are not. Bounded: 64 folders deep, 262,144 files with several
/// names; what goes beyond is not counted.
class FolderWalk {
public:
    /// `fileSystem` is what `fileSystemOf` gives. `keepGoing` is asked before each entry: it may wait, to
    /// pace the walk, and ends it with false.
    FolderWalk(std::string fileSystem, uid_t user, std::function<bool()> keepGoing)
        : m_fileSystem(std::move(fileSystem)), m_user(user), m_keepGoing(std::move(keepGoing)) {}

    /// Adds a folder; one that is absent or cannot be opened adds nothing.
    void add(const std::string& folder);

    /// Only a part, once `keepGoing` said no.
    [[nodiscard]] std::uint64_t bytes() const { return m_bytes; }

private:
    struct Place {
        int folder; ///< its descriptor
        dev_t device;
        int depth;
    };
    void walk(posix::Descriptor descriptor, int depth);
    void count(const Place& place, const char* name, bool mayBeFolder);
    [[nodiscard]] bool hasAllNames(const struct stat& about);
    [[nodiscard]] std::uint64_t blocksOf(const Place& place, const char* name,
                                         const struct stat& about) const;

    std::string m_fileSystem;
    uid_t m_user;
    std::function<bool()> m_keepGoing;
    std::map<std::pair<dev_t, ino_t>, nlink_t> m_namesMet; ///< of files with several names
    std::uint64_t m_bytes = 0;
    bool m_sharing = false;
    bool m_stopped = false;
};

} // namespace vantor::platform::linux
