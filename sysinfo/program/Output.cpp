// SPDX-License-Identifier: MIT
#include "sysinfo/program/Output.hpp"

#include "platform/posix/Environment.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>

namespace vantor::sysinfo {

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
    std::fwrite(text.data(), 1, text.size(), stdout);
}

} // namespace vantor::sysinfo
