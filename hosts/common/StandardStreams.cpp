// SPDX-License-Identifier: MIT
#include "hosts/common/StandardStreams.hpp"

#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>

namespace vantor::hosts::common {

namespace {

bool canTake(int descriptor) {
    struct pollfd reader {};
    reader.fd = descriptor;
    reader.events = POLLOUT;
    return ::poll(&reader, 1, 0) == 1 && (reader.revents & POLLOUT) != 0;
}

/// A pipe that can be written to takes this much without waiting. It always answers that all was written: the
/// stream would keep the rest and go on with it in the middle of a line.
ssize_t writeWithoutWaiting(void* cookie, const char* bytes, std::size_t count) {
    const auto descriptor = static_cast<int>(reinterpret_cast<std::intptr_t>(cookie));
    for (std::size_t done = 0; done < count && canTake(descriptor);) {
        const std::size_t piece = std::min<std::size_t>(count - done, PIPE_BUF);
        const ssize_t written =
            platform::posix::uninterrupted([&] { return ::write(descriptor, bytes + done, piece); });
        if (written <= 0) {
            break;
        }
        done += static_cast<std::size_t>(written);
    }
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

std::FILE* unhurriedStream(int descriptor) {
    cookie_io_functions_t functions{};
    functions.write = writeWithoutWaiting;
    // The number itself is the cookie: nothing is ever read through it.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return ::fopencookie(reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor)), "w", functions);
}

} // namespace vantor::hosts::common
