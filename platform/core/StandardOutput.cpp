// SPDX-License-Identifier: MIT
#include "platform/core/StandardOutput.hpp"

#include <atomic>

namespace vantor::platform {

namespace {
std::atomic<std::FILE*> replacement{nullptr};
} // namespace

std::FILE* standardOutput() noexcept {
    std::FILE* const stream = replacement.load();
    return stream != nullptr ? stream : stdout;
}

void setStandardOutput(std::FILE* stream) noexcept {
    replacement.store(stream);
}

} // namespace vantor::platform
