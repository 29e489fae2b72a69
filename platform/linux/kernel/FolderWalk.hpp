// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <set>
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

    /// Adds what is below a folder; one that is absent or cannot be opened adds nothing.
    void add(const std::string& folder);
    /// Adds one entry of an open folder, with everything below it.
    void addEntry(int folder, const char* name);
    /// From now on a folder is passed over, with everything below it.
    void leaveOut(dev_t device, ino_t number) { m_leftOut.emplace(device, number); }

    /// Only a part, once `keepGoing` said no.
    [[nodiscard]] std::uint64_t bytes() const { return m_bytes; }

    /// False where a folder of the user's could not be opened, so that what is in it is missing.
    [[nodiscard]] bool isWhole() const { return m_whole; }

    /// When regular files were last read or written, in seconds since 1970. File systems that are told not to
    /// keep the time of reading, or to do so once a day, know only that.
    struct Use {
        std::int64_t newest = std::numeric_limits<std::int64_t>::min();
        std::int64_t oldest = std::numeric_limits<std::int64_t>::max();
    };
    /// Of the files met since the last call; absent where there were none.
    [[nodiscard]] std::optional<Use> takeUse();

private:
    struct Place {
        int folder; ///< its descriptor
        dev_t device;
        int depth;
    };
    void walk(posix::Descriptor descriptor, int depth);
    void noteUse(const struct stat& about);
    void count(const Place& place, const char* name, bool mayBeFolder);
    [[nodiscard]] bool hasAllNames(const struct stat& about);
    [[nodiscard]] std::uint64_t blocksOf(const Place& place, const char* name,
                                         const struct stat& about) const;

    std::string m_fileSystem;
    uid_t m_user;
    std::function<bool()> m_keepGoing;
    std::map<std::pair<dev_t, ino_t>, nlink_t> m_namesMet; ///< of files with several names
    std::set<std::pair<dev_t, ino_t>> m_leftOut;
    Use m_use;
    std::uint64_t m_bytes = 0;
    bool m_sharing = false;
    bool m_stopped = false;
    bool m_whole = true;
};

} // namespace vantor::platform::linux
