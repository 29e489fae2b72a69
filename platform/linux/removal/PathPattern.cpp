// SPDX-License-Identifier: MIT
#include "platform/linux/removal/PathPattern.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/removal/Remover.hpp"

#include <fcntl.h>
#include <fnmatch.h>
#include <unistd.h>

#include <utility>

namespace vantor::platform::linux {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;

void descend(posix::Descriptor folder, const std::string& path, std::string_view pattern,
             const FoundPath& found);

void meet(int folder, const char* name, const std::string& above, std::string_view rest,
          const FoundPath& found) {
    // Opened before anything is asked about it: what is mounted there may never answer.
    const posix::Descriptor seen = openBelow(folder, name, O_PATH | O_NOFOLLOW | O_CLOEXEC);
    struct stat about {};
    if (!seen.isOpen() || ::fstat(seen.number(), &about) != 0 || about.st_uid != ::geteuid()) {
        return;
    }
    const std::string path = above + '/' + name;
    if (rest.empty()) {
        found(folder, name, path, about);
    } else if (S_ISDIR(about.st_mode)) {
        descend(openBelow(folder, name, folderFlags), path, rest, found);
    }
}

void descend(posix::Descriptor folder, const std::string& path, std::string_view pattern,
             const FoundPath& found) {
    const std::string part(takeUntil(pattern, '/'));
    if (part.find_first_of("*?[") == std::string::npos) {
        if (folder.isOpen()) {
            meet(folder.number(), part.c_str(), path, pattern, found);
        }
        return;
    }
    Folder entries(std::move(folder));
    while (const char* const name = entries.next()) {
        if (::fnmatch(part.c_str(), name, FNM_PERIOD) == 0) {
            meet(entries.number(), name, path, pattern, found);
        }
    }
}

} // namespace

void findPaths(const std::string& base, std::string_view pattern, const FoundPath& found) {
    descend(Remover::openOwn(AT_FDCWD, base.c_str()), base, pattern, found);
}

} // namespace vantor::platform::linux
