// SPDX-License-Identifier: MIT
#include "platform/linux/removal/Remover.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/linux/kernel/Folder.hpp"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace vantor::platform::linux {

namespace {

constexpr int deepest = 64;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;

/// Gives the owner the right to empty a folder, by its descriptor: its name may stand for another one by now.
void permit(int folder, const struct stat& about) {
    if ((about.st_mode & S_IRWXU) != S_IRWXU) {
        const std::string self = "/proc/self/fd/" + std::to_string(folder);
        (void)::chmod(self.c_str(), (about.st_mode & 07777U) | S_IRWXU);
    }
}

bool lookAt(int folder, const char* name, struct stat& about) {
    return ::fstatat(folder, name, &about, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) == 0;
}

} // namespace

posix::Descriptor openBelow(int folder, const char* name, int flags) {
    struct open_how how {};
    how.flags = static_cast<std::uint64_t>(static_cast<unsigned>(flags));
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS | RESOLVE_NO_MAGICLINKS | RESOLVE_NO_XDEV;
    const auto open = [&] {
        return static_cast<int>(::syscall(SYS_openat2, folder, name, &how, sizeof how));
    };
    const int number = posix::uninterrupted(open);
    const bool isUnknown =
        number < 0 && (errno == ENOSYS || errno == EPERM); // an old kernel, or a filter's no
    return posix::Descriptor(isUnknown ? ::openat(folder, name, flags) : number);
}

FileIdentity identityOf(const struct stat& about) {
    return {about.st_dev, about.st_ino};
}

posix::Descriptor Remover::openOwn(int folder, const char* name) {
    posix::Descriptor descriptor(::openat(folder, name, folderFlags));
    struct stat about {};
    const bool isOwn =
        descriptor.isOpen() && ::fstat(descriptor.number(), &about) == 0 && about.st_uid == ::geteuid();
    return isOwn ? std::move(descriptor) : posix::Descriptor();
}

bool Remover::stays(const char* name, const std::string& reason) {
    if (m_outcome.problem.empty()) {
        m_outcome.problem = printableText(name) + ": " + reason;
    }
    return false;
}

bool Remover::remove(int folder, const std::string& name, const FileIdentity& identity) {
    struct stat about {};
    if (!lookAt(folder, name.c_str(), about)) {
        return errno == ENOENT || stays(name.c_str(), posix::errorText(errno));
    }
    if (identityOf(about) != identity) {
        return stays(name.c_str(), "is another file than before");
    }
    struct stat above {};
    if (::fstat(folder, &above) != 0 || above.st_dev != about.st_dev) {
        return stays(name.c_str(), "is on another file system");
    }
    return removeEntry(folder, name.c_str(), about, 0);
}

bool Remover::isNewer(const struct stat& about) const {
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t changed = about.st_ctim.tv_sec * second + about.st_ctim.tv_nsec;
    return m_listed && changed > *m_listed && !m_touched.contains(identityOf(about));
}

bool Remover::removeEntry(int folder, const char* name, const struct stat& about, int depth) {
    m_isStopped = m_isStopped || !m_keepGoing();
    if (m_isStopped) {
        return stays(name, "was left when the work was stopped");
    }
    if (S_ISDIR(about.st_mode)) {
        return removeFolder(folder, name, about, depth);
    }
    if (isNewer(about)) {
        return stays(name, "was written after it was listed");
    }
    if (::unlinkat(folder, name, 0) != 0) {
        return errno == ENOENT || stays(name, posix::errorText(errno));
    }
    ++m_outcome.entries;
    if (about.st_nlink == 1) { // else another name keeps the blocks
        m_outcome.bytes += static_cast<std::uint64_t>(about.st_blocks) * 512;
    } else if (m_listed) {
        m_touched.insert(identityOf(about));
    }
    return true;
}

bool Remover::removeFolder(int folder, const char* name, const struct stat& about, int depth) {
    if (depth == deepest) {
        return stays(name, "is too many folders deep");
    }
    if (about.st_uid != ::geteuid()) {
        return stays(name, "is another user's folder");
    }
    const posix::Descriptor found = openBelow(folder, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat opened {};
    if (!found.isOpen() || ::fstat(found.number(), &opened) != 0) {
        return stays(name, errno == EXDEV ? "something is mounted there" : posix::errorText(errno));
    }
    if (identityOf(opened) != identityOf(about)) {
        return stays(name, "is another folder than before");
    }
    permit(found.number(), opened);
    bool isEmpty = true;
    {
        posix::Descriptor inner(::openat(found.number(), ".", folderFlags));
        isEmpty = inner.isOpen() && removeEntriesOf(inner.number(), depth);
        if (!inner.isOpen()) {
            return stays(name, posix::errorText(errno));
        }
    }
    if (!isEmpty) {
        return false; // the reason has been noted
    }
    if (::unlinkat(folder, name, AT_REMOVEDIR) != 0) {
        return errno == ENOENT || stays(name, posix::errorText(errno));
    }
    ++m_outcome.entries;
    m_outcome.bytes += static_cast<std::uint64_t>(about.st_blocks) * 512;
    return true;
}

/// Some file systems skip entries when others are deleted while a folder is read: it is read again as long as
/// that finds something to delete.
bool Remover::removeEntriesOf(int folder, int depth) {
    constexpr int mostPasses = 64;
    for (int pass = 0; pass < mostPasses; ++pass) {
        const std::uint64_t before = m_outcome.entries;
        bool isWhole = true;
        bool isEmpty = true;
        Folder entries(posix::Descriptor(::openat(folder, ".", folderFlags)));
        while (const char* const name = entries.next()) {
            isEmpty = false;
            struct stat about {};
            isWhole = lookAt(folder, name, about) ? removeEntry(folder, name, about, depth + 1) && isWhole
                                                  : isWhole;
            if (m_isStopped) {
                return false;
            }
        }
        if (isEmpty || !isWhole || m_outcome.entries == before) {
            return isWhole;
        }
    }
    return true; // what is still there keeps the folder, and is told then
}

} // namespace vantor::platform::linux
