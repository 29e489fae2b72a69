// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace vantor::tests {

/// What this process writes to standard output meanwhile, which is where log lines go.
template<class Work>
std::string logOf(Work work) {
    testing::internal::CaptureStdout();
    work();
    return testing::internal::GetCapturedStdout();
}

struct Outcome {
    std::string output; ///< standard error included
    int code = -1;      ///< -1: ended by a signal
};

/// Runs a command line of the test's own making in the C locale, with the folders that hold a system's tools.
inline Outcome shell(const std::string& command) {
    Outcome outcome;
    std::FILE* const pipe =
        ::popen(("LC_ALL=C PATH=$PATH:/usr/sbin:/sbin " + command + " 2>&1").c_str(), "r");
    std::array<char, 4096> chunk{};
    while (const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), pipe)) {
        outcome.output.append(chunk.data(), count);
    }
    const int status = ::pclose(pipe);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

} // namespace vantor::tests
