// SPDX-License-Identifier: MIT
#include "hosts/common/FreeUpByLink.hpp"

#include "platform/posix/Descriptor.hpp"
#include "platform/posix/FileReplacement.hpp"
#include "platform/posix/UserFolders.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <system_error>
#include <utility>

namespace vantor::hosts::common {

namespace {

using Answer = LinkLeave::Answer;

LinkLeave notKept(const std::string& path, int error) {
    return {Answer::notKept, path + ": " + std::generic_category().message(error)};
}

} // namespace

LinkLeave mayFreeUpByLink() {
    constexpr std::time_t pause = 60; // seconds
    const std::string folder = platform::posix::UserFolders::fromEnvironment().state;
    const std::string path = folder + "/vantor/freed-by-link";
    if (folder.empty()) {
        return {Answer::notKept, "the environment names no home and no XDG_STATE_HOME"};
    }
    if (std::optional<std::string> problem = platform::posix::makeFoldersTo(path)) {
        return {Answer::notKept, std::move(*problem)};
    }
    const platform::posix::Descriptor file(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    if (!file.isOpen()) {
        return notKept(path, errno);
    }
    struct stat about {};
    if (::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        return error == EWOULDBLOCK ? LinkLeave{Answer::tooSoon, {}} // another one gets its answer just now
                                    : notKept(path, error);
    }
    if (::fstat(file.number(), &about) != 0) {
        return notKept(path, errno);
    }
    // A new file is empty; its time counts from the first byte on. One that is far ahead is of a clock that
    // was set back; one that is a little ahead is of a file system whose clock is finer than ours.
    if (about.st_size > 0 && std::abs(std::time(nullptr) - about.st_mtime) < pause) {
        return {Answer::tooSoon, {}};
    }
    return ::pwrite(file.number(), "\n", 1, 0) == 1 ? LinkLeave() : notKept(path, errno);
}

} // namespace vantor::hosts::common
