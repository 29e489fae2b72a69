// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Look.hpp"

#include <cmath>

namespace vantor::hosts::terminal {

namespace {

std::uint32_t byteOf(double component, double alpha, double background) {
    return static_cast<std::uint32_t>(std::lround(255 * (component * alpha + background * (1 - alpha))));
}

} // namespace

Ink inkOf(const platform::UIColor& color, double opacity, const Look& look) {
    if (color == platform::UIColor::labelColor() && opacity == 1) {
        return {};
    }
    const platform::RGBA paint = color.resolved(look.appearance);
    const double alpha = paint.alpha * opacity;
    const double background = look.appearance == platform::Appearance::dark ? 0 : 1;
    Ink ink;
    ink.rgb = byteOf(paint.red, alpha, background) << 16 | byteOf(paint.green, alpha, background) << 8 |
              byteOf(paint.blue, alpha, background);
    ink.isColored = true;
    ink.isFaint = alpha < 1;
    return ink;
}

} // namespace vantor::hosts::terminal
