// SPDX-License-Identifier: MIT
#include "platform/drawing/LinearAnimation.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::platform {

double LinearAnimation::valueAt(Instant now) const {
    const double elapsed = std::chrono::duration<double>(now - start).count();
    if (elapsed >= duration || !std::isfinite(from) || !std::isfinite(to)) {
        return to; // between numbers that are none there is no way
    }
    return from + (to - from) * std::max(elapsed, 0.0) / duration;
}

bool LinearAnimation::isRunningAt(Instant now) const {
    return valueAt(now) != to && !std::isnan(to);
}

void LinearAnimation::retarget(double aim, Instant now, double seconds) {
    if (aim == to) {
        return;
    }
    from = valueAt(now);
    to = aim;
    start = now;
    duration = seconds;
}

} // namespace vantor::platform
