// SPDX-License-Identifier: MIT
#include "platform/posix/Environment.hpp"

#include <cstdlib>

namespace vantor::platform::posix {

std::string environmentText(const char* variable) {
    const char* const value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): see the header
    return value != nullptr ? value : "";
}

} // namespace vantor::platform::posix
