// SPDX-License-Identifier: MIT
#pragma once

/// Rectangles in points: the origin is the upper left corner, y grows downward.
namespace vantor::platform {

struct CGPoint {
    double x = 0;
    double y = 0;
    bool operator==(const CGPoint&) const = default;
};

struct CGSize {
    double width = 0;
    double height = 0;
    bool operator==(const CGSize&) const = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
    bool operator==(const CGRect&) const = default;
};

[[nodiscard]] constexpr double CGRectGetMidX(const CGRect& rect) {
    return rect.origin.x + rect.size.width * 0.5;
}
[[nodiscard]] constexpr double CGRectGetMidY(const CGRect& rect) {
    return rect.origin.y + rect.size.height * 0.5;
}
[[nodiscard]] constexpr double CGRectGetWidth(const CGRect& rect) {
    return rect.size.width;
}
[[nodiscard]] constexpr double CGRectGetMaxX(const CGRect& rect) {
    return rect.origin.x + rect.size.width;
}
[[nodiscard]] constexpr double CGRectGetMaxY(const CGRect& rect) {
    return rect.origin.y + rect.size.height;
}

/// The largest square that fits into a rectangle, centred in it.
[[nodiscard]] constexpr CGRect squareInside(const CGRect& rect) {
    const double side = rect.size.width < rect.size.height ? rect.size.width : rect.size.height;
    return {{CGRectGetMidX(rect) - side * 0.5, CGRectGetMidY(rect) - side * 0.5}, {side, side}};
}

} // namespace vantor::platform
