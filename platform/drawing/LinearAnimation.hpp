// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/RunLoop.hpp"

namespace vantor::platform {

/// A number on its way from one value to another at constant speed: what an animation transaction with linear
/// timing makes of a property. A plain value, evaluated at an instant.
struct LinearAnimation {
    double from = 0;
    double to = 0;
    Instant start{};
    double duration = 0; ///< seconds

    [[nodiscard]] double valueAt(Instant now) const;
    [[nodiscard]] bool isRunningAt(Instant now) const;

    /// A new aim, set out for at `now` from what is on screen then.
    void retarget(double aim, Instant now, double seconds);
};

} // namespace vantor::platform
