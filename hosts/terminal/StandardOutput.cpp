// SPDX-License-Identifier: MIT
#include "hosts/terminal/StandardOutput.hpp"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace vantor::hosts::terminal {

Output writeOut(std::string_view text) {
    while (!text.empty()) {
        const ::ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) { // somebody who shares the pipe wants writes that do not wait
            struct pollfd reader {};
            reader.fd = STDOUT_FILENO;
            reader.events = POLLOUT;
            ::poll(&reader, 1, -1);
        } else if (errno == EPIPE) {
            return Output::unread;
        } else if (errno != EINTR) {
            std::fprintf(stderr, "vantor-term: standard output: %s\n", std::strerror(errno));
            return Output::failed;
        }
    }
    return Output::written;
}

} // namespace vantor::hosts::terminal
