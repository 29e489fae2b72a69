// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/FolderWalk.hpp"

#include "platform/linux/kernel/FileSystem.hpp"
#include "platform/linux/kernel/Folder.hpp"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace vantor::platform::linux {

namespace {
constexpr int deepest = 64;
constexpr std::size_t mostLinked = 262144;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;
constexpr int fileFlags = O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

/// Opens a folder in a folder, unless something is mounted there (EXDEV). Kernels before 5.6 do not tell, and
/// then it is not open.
posix::Descriptor openInner(int folder, const char* name) {
    struct open_how how {};
    how.flags = folderFlags;
    how.resolve = RESOLVE_NO_XDEV;
    return posix::Descriptor(static_cast<int>(::syscall(SYS_openat2, folder, name, &how, sizeof how)));
}
} // namespace

void FolderWalk::add(const std::string& folder) {
    posix::Descriptor descriptor(::open(folder.c_str(), folderFlags));
    if (descriptor.isOpen() && fileSystemOf(descriptor.number()) == m_fileSystem) {
        m_sharing = mayShareBlocks(descriptor.number());
        walk(std::move(descriptor), 0);
    }
}

void FolderWalk::addEntry(int folder, const char* name) {
    struct stat about {};
    m_stopped = m_stopped || !m_keepGoing();
    if (!m_stopped && ::fstat(folder, &about) == 0 && fileSystemOf(folder) == m_fileSystem) {
        m_sharing = mayShareBlocks(folder);
        count({folder, about.st_dev, 0}, name, true);
    }
}

std::optional<FolderWalk::Use> FolderWalk::takeUse() {
    const Use use = std::exchange(m_use, {});
    return use.newest >= use.oldest ? std::optional(use) : std::nullopt;
}

void FolderWalk::noteUse(const struct stat& about) {
    const std::int64_t used = std::max(about.st_atim.tv_sec, about.st_mtim.tv_sec);
    m_use = {std::max(m_use.newest, used), std::min(m_use.oldest, used)};
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
        count(place, name, folder.mayBeFolder());
    }
}

void FolderWalk::count(const Place& place, const char* name, bool mayBeFolder) {
    // Before anything is asked about it: a file system that is mounted there may never answer.
    posix::Descriptor inner = mayBeFolder ? openInner(place.folder, name) : posix::Descriptor();
    if (mayBeFolder && !inner.isOpen() && errno == EXDEV) {
        return;
    }
    struct stat about {};
    const int error = inner.isOpen()
                          ? ::fstat(inner.number(), &about)
                          : ::fstatat(place.folder, name, &about, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT);
    if (error != 0) {
        return;
    }
    const bool isFolder = S_ISDIR(about.st_mode);
    if (isFolder && m_leftOut.contains({about.st_dev, about.st_ino})) {
        return;
    }
    const bool isElsewhere = about.st_dev != place.device;
    if (isElsewhere && !(isFolder && m_sharing)) {
        return;
    }
    if (isFolder && !inner.isOpen()) {
        inner = posix::Descriptor(::openat(place.folder, name, folderFlags));
    }
    if (isElsewhere && !(inner.isOpen() && fileSystemOf(inner.number()) == m_fileSystem)) {
        return;
    }
    if (about.st_uid == m_user && (isFolder || hasAllNames(about))) {
        m_bytes += blocksOf(place, name, about);
        m_whole = m_whole && (!isFolder || inner.isOpen());
    }
    if (S_ISREG(about.st_mode)) {
        noteUse(about);
    }
    if (inner.isOpen() && place.depth < deepest) {
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
