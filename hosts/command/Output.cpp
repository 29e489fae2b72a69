// SPDX-License-Identifier: MIT
#include "hosts/command/Output.hpp"

#include "platform/posix/WriteWhole.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace vantor::hosts::command {

namespace {
int firstError = 0;
}

void print(std::string_view text) {
    if (printError() == 0) {
        firstError = platform::posix::writeWhole(STDOUT_FILENO, text);
    }
}

int printError() {
    if (firstError == 0 && std::fflush(stdout) != 0) { // what a library printed by itself
        firstError = errno;
    }
    return firstError;
}

} // namespace vantor::hosts::command
