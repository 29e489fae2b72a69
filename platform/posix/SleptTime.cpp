// SPDX-License-Identifier: MIT
#include "platform/posix/SleptTime.hpp"

#include <ctime>

namespace vantor::platform::posix {

std::chrono::nanoseconds sleptTime() {
    const auto read = [](clockid_t clock) {
        timespec time{};
        ::clock_gettime(clock, &time);
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    };
    return read(CLOCK_BOOTTIME) - read(CLOCK_MONOTONIC);
}

} // namespace vantor::platform::posix
