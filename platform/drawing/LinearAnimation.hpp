// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/RunLoop.hpp"

namespace vantor::platform {

/// A number on its way from one value to another at constant speed, as a property is in an animation with
/// linear timing. A plain value that can be asked for any instant.
struct LinearAnimation {
    double from = 0;
    double to = 0;
    Instant start{};
    double duration = 0; ///< seconds

    /// The number at an instant: `from` up to the start, `to` from the end on, and whenever one of them is
    /// not finite.
    [[nodiscard]] double valueAt(Instant now) const;
    [[nodiscard]] bool isRunningAt(Instant now) const;

    /// Leaves for a new aim at `now`, from the value of that instant, and arrives after so many seconds. One
    /// that it is on its way to already changes nothing.
    void retarget(double aim, Instant now, double seconds);
};

} // namespace vantor::platform
