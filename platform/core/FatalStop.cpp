// SPDX-License-Identifier: MIT
#include "platform/core/FatalStop.hpp"

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace vantor::platform {

namespace {
std::atomic<FatalStopHook> fatalStopHook{nullptr};
} // namespace

void setFatalStopHook(FatalStopHook hook) noexcept {
    fatalStopHook.store(hook);
}

void fatalStop(std::string_view what) noexcept {
    if (const FatalStopHook hook = fatalStopHook.exchange(nullptr)) {
        hook();
    }
    std::fprintf(stderr, "vantor: fatal: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

} // namespace vantor::platform
