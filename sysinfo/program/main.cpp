// SPDX-License-Identifier: MIT
#include "sysinfo/program/CommandLine.hpp"

#include <csignal>

int main(int count, char** arguments) {
    std::signal(SIGXFSZ, SIG_IGN); // a recording beyond the size that files may have is an error of write(2)
    return vantor::sysinfo::run(count, arguments);
}
