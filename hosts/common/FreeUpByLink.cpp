// SPDX-License-Identifier: MIT
#include "hosts/common/FreeUpByLink.hpp"

#include "platform/posix/Descriptor.hpp"
#include "platform/posix/FileReplacement.hpp"
#include "platform/posix/UserFolders.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

namespace vantor::hosts::common {

bool mayFreeUpByLink() {
    constexpr std::time_t pause = 60; // seconds
    const std::string folder = platform::posix::UserFolders::fromEnvironment().state;
    const std::string path = folder + "/vantor/freed-by-link";
    if (folder.empty() || platform::posix::makeFoldersTo(path)) {
        return false;
    }
    const platform::posix::Descriptor file(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    struct stat about {};
    if (!file.isOpen() || ::flock(file.number(), LOCK_EX | LOCK_NB) != 0 ||
        ::fstat(file.number(), &about) != 0) {
        return false; // somebody is asking just now
    }
    // A new file is empty; its time counts from the first byte on. One that is far ahead is of a clock that
    // was set back; one that is a little ahead is of a file system whose clock is finer than ours.
    const bool isTooSoon = about.st_size > 0 && std::abs(std::time(nullptr) - about.st_mtime) < pause;
    return !isTooSoon && ::pwrite(file.number(), "\n", 1, 0) == 1;
}

} // namespace vantor::hosts::common
