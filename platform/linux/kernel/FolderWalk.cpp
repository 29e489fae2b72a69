// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/FolderWalk.hpp"

#include "platform/linux/kernel/KernelFile.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <memory>
#include <string_view>

namespace vantor::platform::linux {

namespace {

constexpr int deepest = 64;
constexpr std::size_t mostLinked = 262144;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

} // namespace

void FolderWalk::add(const std::string& folder) {
    struct stat about {};
    posix::Descriptor descriptor(::open(folder.c_str(), folderFlags));
    if (descriptor.isOpen() && ::fstat(descriptor.number(), &about) == 0 && about.st_dev == m_fileSystem) {
        walk(descriptor.release(), 0);
    }
}

/// Takes the descriptor over.
void FolderWalk::walk(int descriptor, int depth) {
    const std::unique_ptr<DIR, CloseFolder> folder(::fdopendir(descriptor));
    if (!folder) {
        posix::Descriptor(descriptor).reset();
        return;
    }
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the folder belongs to this function
    while (const dirent* const entry = ::readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        m_stopped = m_stopped || !m_keepGoing();
        if (m_stopped) {
            return;
        }
        count(::dirfd(folder.get()), entry->d_name, depth);
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
            walk(inner.release(), depth + 1);
        }
    }
}

} // namespace vantor::platform::linux
