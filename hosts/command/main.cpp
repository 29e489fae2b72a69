// SPDX-License-Identifier: MIT
#include "hosts/command/CommandLine.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "platform/core/StandardOutput.hpp"
#include "platform/posix/Descriptor.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

int main(int count, char** arguments) {
    using namespace vantor::hosts;
    common::holdClosedStreams();
    common::letWritesFail();
    // The log; standard output is for what was asked for.
    vantor::platform::setStandardOutput(common::unhurriedStream(STDERR_FILENO));
    int status = command::parseCommandLine(count, arguments)();
    if (const int error = command::printError(); error != 0 && error != EPIPE) {
        command::complain("standard output: " + vantor::platform::posix::errorText(error));
        status = command::refused;
    }
    // Not through the destructors of static objects: a worker may still be inside a file system that hangs.
    std::_Exit(status);
}
