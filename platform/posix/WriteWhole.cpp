// SPDX-License-Identifier: MIT
#include "platform/posix/WriteWhole.hpp"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstddef>

namespace vantor::platform::posix {

int writeWhole(int descriptor, std::string_view text, std::chrono::milliseconds patience) {
    const int wait = patience.count() > INT_MAX ? -1 : static_cast<int>(patience.count());
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            struct pollfd reader {};
            reader.fd = descriptor;
            reader.events = POLLOUT;
            if (const int ready = ::poll(&reader, 1, wait); ready == 0) {
                return ETIMEDOUT;
            }
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace vantor::platform::posix
