// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/FolderWalk.hpp"

#include "platform/linux/kernel/FileSystem.hpp"
#include "platform/linux/kernel/Folder.hpp"

#include <fcntl.h>

#include <algorithm>

namespace vantor::platform::linux {

namespace {
constexpr int deepest = 64;
constexpr std::size_t mostLinked = 262144;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;
constexpr int fileFlags = O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
} // namespace

void FolderWalk::add(const std::string& folder) {
    posix::Descriptor descriptor(::open(folder.c_str(), folderFlags));
    if (descriptor.isOpen() && fileSystemOf(descriptor.number()) == m_fileSystem) {
        m_sharing = mayShareBlocks(descriptor.number());
        walk(std::move(descriptor), 0);
    }
}

void FolderWalk::walk(posix::Descriptor descriptor, int depth) {
    struct stat about {};
    if (::fstat(descriptor.number(), &about) != 0) {
        return;
    }
    Folder folder(std::move(descriptor));
    const Place place{folder.number(), about.st_dev, depth};
    while (const char* const name = folder.next()) {
        m_stopped = m_stopped || !m_keepGoing();
        if (m_stopped) {
            return;
        }
        count(place, name);
    }
}

void FolderWalk::count(const Place& place, const char* name) {
    struct stat about {};
    if (::fstatat(place.folder, name, &about, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) {
        return;
    }
    const bool isFolder = S_ISDIR(about.st_mode);
    const bool isElsewhere = about.st_dev != place.device;
    if (isElsewhere && !(isFolder && m_sharing)) {
        return;
    }
    posix::Descriptor inner;
    if (isFolder && place.depth < deepest) {
        inner = posix::Descriptor(::openat(place.folder, name, folderFlags));
    }
    if (isElsewhere && !(inner.isOpen() && fileSystemOf(inner.number()) == m_fileSystem)) {
        return;
    }
    if (about.st_uid == m_user && (isFolder || hasAllNames(about))) {
        m_bytes += blocksOf(place, name, about);
    }
    if (inner.isOpen()) {
        walk(std::move(inner), place.depth + 1);
    }
}

/// Whether this is the last of a file's names.
bool FolderWalk::hasAllNames(const struct stat& about) {
    if (about.st_nlink <= 1) {
        return true;
    }
    const std::pair file(about.st_dev, about.st_ino);
    if (m_namesMet.size() == mostLinked && !m_namesMet.contains(file)) {
        return false;
    }
    return ++m_namesMet[file] == about.st_nlink;
}

std::uint64_t FolderWalk::blocksOf(const Place& place, const char* name, const struct stat& about) const {
    const std::uint64_t blocks =
        static_cast<std::uint64_t>(about.st_blocks) * 512; // stat(2): blocks of 512 bytes, always
    if (!m_sharing || !S_ISREG(about.st_mode) || blocks == 0) {
        return blocks;
    }
    const posix::Descriptor file(::openat(place.folder, name, fileFlags));
    return file.isOpen() ? std::min(blocks, unsharedBytes(file.number()).value_or(blocks)) : 0;
}

} // namespace vantor::platform::linux
