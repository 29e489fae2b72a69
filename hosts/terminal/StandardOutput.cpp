// SPDX-License-Identifier: MIT
#include "hosts/terminal/StandardOutput.hpp"

#include "platform/posix/WriteWhole.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace vantor::hosts::terminal {

Output writeOut(std::string_view text) {
    const int error = platform::posix::writeWhole(STDOUT_FILENO, text);
    if (error == 0 || error == EPIPE) {
        return error == 0 ? Output::written : Output::unread;
    }
    std::fprintf(stderr, "vantor-term: standard output: %s\n", std::strerror(error));
    return Output::failed;
}

} // namespace vantor::hosts::terminal
