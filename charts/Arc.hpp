// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/Layer.hpp"

namespace vantor {

/// A shape: one circular arc about the middle of a rectangle, with half the rectangle's width as its radius.
/// It is not inset, so half of its stroke lies outside. Nothing of it is animated.
struct Arc {
    platform::Angle startAngle;
    platform::Angle endAngle;
    bool clockwise = false;

    [[nodiscard]] platform::Path path(const platform::CGRect& rect) const;
};

} // namespace vantor
