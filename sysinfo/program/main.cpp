// SPDX-License-Identifier: MIT
#include "sysinfo/program/CommandLine.hpp"

int main(int count, char** arguments) {
    return vantor::sysinfo::run(count, arguments);
}
