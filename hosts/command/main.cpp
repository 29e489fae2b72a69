// SPDX-License-Identifier: MIT
#include "hosts/command/CommandLine.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/common/StandardStreams.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int count, char** arguments) {
    using namespace vantor::hosts;
    common::holdClosedStreams();
    int status = command::parseCommandLine(count, arguments)();
    if ((std::fflush(stdout) != 0 || std::ferror(stdout) != 0) && errno != EPIPE) {
        command::complain(std::string("standard output: ") + std::strerror(errno));
        status = command::refused;
    }
    // Not through the destructors of static objects: a worker may still be inside a file system that hangs.
    std::_Exit(status);
}
