// SPDX-License-Identifier: MIT
#include "platform/linux/user/LeftBehind.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/posix/FileReplacement.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux {

namespace {

/// The process that a name tells of: 12 of ".vantor-12-0".
std::optional<int> writerOf(std::string_view name) {
    if (!name.starts_with(posix::unfinishedPrefix)) {
        return std::nullopt;
    }
    name.remove_prefix(posix::unfinishedPrefix.size());
    const std::size_t dash = name.find('-');
    const std::optional<std::uint64_t> process = numberFrom(name.substr(0, dash));
    const bool isName = dash != std::string_view::npos && numberFrom(name.substr(dash + 1)).has_value();
    return isName && process && *process > 0 && *process <= INT_MAX
               ? std::optional(static_cast<int>(*process))
               : std::nullopt;
}

/// In a container that starts anew an earlier writer may have had our number: the lock decides there.
bool isGone(int process) {
    return process == ::getpid() || (::kill(process, 0) != 0 && errno == ESRCH);
}

/// A writer in another container is not seen by its number, but its lock is.
void removeUnlocked(int folder, const char* name) {
    const posix::Descriptor file(
        ::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat about {
    }, named{};
    const bool isOurs = file.isOpen() && ::fstat(file.number(), &about) == 0 && S_ISREG(about.st_mode) &&
                        about.st_uid == ::geteuid() && ::flock(file.number(), LOCK_EX | LOCK_NB) == 0;
    if (isOurs && ::fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 && named.st_dev == about.st_dev &&
        named.st_ino == about.st_ino) {
        ::unlinkat(folder, name, 0);
    }
}

} // namespace

void removeLeftBehind(int folder) {
    Folder entries(posix::Descriptor(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)));
    std::vector<std::string> found; // removed afterwards: a folder's order may change with its entries
    while (const char* const name = entries.next()) {
        if (const std::optional<int> writer = writerOf(name); writer && isGone(*writer)) {
            found.emplace_back(name);
        }
    }
    for (const std::string& name : found) {
        removeUnlocked(folder, name.c_str());
    }
}

} // namespace vantor::platform::linux
