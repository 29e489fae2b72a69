// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <utility>

namespace vantor::platform::linux {

/// Adds up what deleting folders would give back: the blocks of everything below them that belongs to one
/// user, on one file system. A file with several names counts once, symbolic links are never followed (a
/// folder that is one counts as nothing), and other file systems mounted below are left out. Bounded: 64
/// folders deep, 262,144 files with several names; what goes beyond is not counted.
class FolderWalk {
public:
    /// `keepGoing` is asked before each entry. It may wait, to pace the walk; false ends it.
    FolderWalk(dev_t fileSystem, uid_t user, std::function<bool()> keepGoing)
        : m_fileSystem(fileSystem), m_user(user), m_keepGoing(std::move(keepGoing)) {}

    /// Adds a folder; one that is absent or cannot be opened adds nothing.
    void add(const std::string& folder);

    [[nodiscard]] std::uint64_t bytes() const { return m_bytes; }

private:
    void walk(posix::Descriptor descriptor, int depth);
    void count(int folder, const char* name, int depth);

    dev_t m_fileSystem;
    uid_t m_user;
    std::function<bool()> m_keepGoing;
    std::set<ino_t> m_linked;
    std::uint64_t m_bytes = 0;
    bool m_stopped = false;
};

} // namespace vantor::platform::linux
