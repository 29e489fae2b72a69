// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/FolderWalk.hpp"

#include "platform/linux/kernel/Folder.hpp"

#include <fcntl.h>
#include <sys/stat.h>

namespace vantor::platform::linux {

namespace {

constexpr int deepest = 64;
constexpr std::size_t mostLinked = 262144;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;

} // namespace

void FolderWalk::add(const std::string& folder) {
    struct stat about {};
    posix::Descriptor descriptor(::open(folder.c_str(), folderFlags));
    if (descriptor.isOpen() && ::fstat(descriptor.number(), &about) == 0 && about.st_dev == m_fileSystem) {
        walk(std::move(descriptor), 0);
    }
}

void FolderWalk::walk(posix::Descriptor descriptor, int depth) {
    Folder folder(std::move(descriptor));
    while (const char* const name = folder.next()) {
        m_stopped = m_stopped || !m_keepGoing();
        if (m_stopped) {
            return;
        }
        count(folder.number(), name, depth);
    }
}

void FolderWalk::count(int folder, const char* name, int depth) {
    struct stat about {};
    if (::fstatat(folder, name, &about, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0 ||
        about.st_dev != m_fileSystem) {
        return;
    }
    const bool isFolder = S_ISDIR(about.st_mode);
    const bool counted = isFolder || about.st_nlink <= 1 ||
                         (m_linked.size() < mostLinked && m_linked.insert(about.st_ino).second);
    if (counted && about.st_uid == m_user) {
        m_bytes += static_cast<std::uint64_t>(about.st_blocks) * 512; // stat(2): blocks of 512 bytes, always
    }
    if (isFolder && depth < deepest) {
        if (posix::Descriptor inner(::openat(folder, name, folderFlags)); inner.isOpen()) {
            walk(std::move(inner), depth + 1);
        }
    }
}

} // namespace vantor::platform::linux
