// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace vantor {

/// The clock that an action goes by, and how it waits. A test puts its own in place.
struct Pace {
    using Moment = std::chrono::steady_clock::time_point;

    std::function<Moment()> now = std::chrono::steady_clock::now;
    std::function<void(std::chrono::milliseconds)> wait = [](std::chrono::milliseconds time) {
        std::this_thread::sleep_for(time);
    };
};

} // namespace vantor
