// SPDX-License-Identifier: MIT
#include "sysinfo/program/Output.hpp"

#include "platform/posix/Environment.hpp"
#include "platform/posix/WriteWhole.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace vantor::sysinfo {

namespace {
int outputError = 0; // of the main thread, the only one that writes
}

Look Look::ofStandardOutput() {
    if (::isatty(STDOUT_FILENO) == 0) {
        return {};
    }
    const std::string terminal = platform::posix::environmentText("TERM");
    Look look;
    look.bold =
        platform::posix::environmentText("NO_COLOR").empty() && !terminal.empty() && terminal != "dumb";
    winsize size{};
    look.width = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
    return look;
}

void complain(const std::string& what) {
    std::fprintf(stderr, "vantor-sysinfo: %s\n", what.c_str());
}

void put(const std::string& text) {
    std::fflush(stdout); // what the libraries printed comes before
    if (outputError == 0) {
        outputError = platform::posix::writeWhole(STDOUT_FILENO, text);
    }
}

bool wasWritten() {
    std::cout.flush();
    return outputError == 0 && std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && std::cout;
}

} // namespace vantor::sysinfo
