// SPDX-License-Identifier: MIT
#include "platform/posix/Environment.hpp"

#include <unistd.h>

#include <cstdlib>

extern char** environ; // NOLINT(readability-redundant-declaration): not every libc declares it

namespace vantor::platform::posix {

std::string environmentText(const char* variable) {
    const char* const value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): see the header
    return value != nullptr ? value : "";
}

std::vector<std::string> wholeEnvironment() {
    std::vector<std::string> all;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        all.emplace_back(*variable);
    }
    return all;
}

} // namespace vantor::platform::posix
