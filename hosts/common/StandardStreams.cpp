// SPDX-License-Identifier: MIT
#include "hosts/common/StandardStreams.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <string>

namespace vantor::hosts::common {

namespace {

bool canTake(int descriptor) {
    struct pollfd reader {};
    reader.fd = descriptor;
    reader.events = POLLOUT;
    return ::poll(&reader, 1, 0) == 1 && (reader.revents & POLLOUT) != 0;
}

/// It always answers that all was written: the stream would keep the rest and go on with it in the middle of
/// a line.
ssize_t writeToCookie(void* cookie, const char* bytes, std::size_t count) {
    writeUnhurried(static_cast<int>(reinterpret_cast<std::intptr_t>(cookie)), {bytes, count});
    return static_cast<ssize_t>(count);
}

} // namespace

void holdClosedStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (::fcntl(stream, F_GETFD) < 0 && errno == EBADF) {
            // The lowest free number is this one. Opened the wrong way round, it fails to be used.
            (void)::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

void letNobodyWaitForErrors() {
    struct stat about {};
    if (::fstat(STDERR_FILENO, &about) != 0 || !(S_ISFIFO(about.st_mode) || S_ISCHR(about.st_mode))) {
        return;
    }
    // Opened anew, since others share the old one with its flags.
    const platform::posix::Descriptor own(
        ::open("/proc/self/fd/2", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (own.isOpen()) {
        ::dup2(own.number(), STDERR_FILENO);
    }
}

void writeUnhurried(int descriptor, std::string_view text) {
    while (!text.empty() && canTake(descriptor)) {
        // A pipe that can be written to takes this much without waiting.
        const std::string_view piece = text.substr(0, PIPE_BUF);
        const ssize_t written =
            platform::posix::uninterrupted([&] { return ::write(descriptor, piece.data(), piece.size()); });
        if (written <= 0) {
            break;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

void complain(std::string_view program, std::string_view text) {
    // A path may be long, and its end is what tells files apart.
    writeUnhurried(STDERR_FILENO, std::string(program) + ": " + platform::printableText(text, 4096) + '\n');
}

void letWritesFail() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

std::FILE* unhurriedStream(int descriptor) {
    cookie_io_functions_t functions{};
    functions.write = writeToCookie;
    // The number itself is the cookie: nothing is ever read through it.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return ::fopencookie(reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor)), "w", functions);
}

} // namespace vantor::hosts::common
