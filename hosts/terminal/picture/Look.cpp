// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Look.hpp"

#include <array>
#include <cmath>

namespace vantor::hosts::terminal {

namespace {

using Components = std::array<double, 3>; // red, green and blue, each within 0...1

/// Where the terminal does not tell: a ground on which what is chosen for it is seen on black and on the
/// usual dark grays, or on white and on paper.
constexpr std::uint32_t usualDark = 0x303030;
constexpr std::uint32_t usualLight = 0xF0F0F0;

Components componentsOf(std::uint32_t rgb) {
    return {(rgb >> 16 & 0xFF) / 255.0, (rgb >> 8 & 0xFF) / 255.0, (rgb & 0xFF) / 255.0};
}

std::uint32_t rgbOf(const Components& components) {
    std::uint32_t rgb = 0;
    for (const double component : components) {
        rgb = rgb << 8 | static_cast<std::uint32_t>(std::lround(255 * component));
    }
    return rgb;
}

Components mixed(const Components& over, const Components& under, double alpha) {
    Components result{};
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = over[i] * alpha + under[i] * (1 - alpha);
    }
    return result;
}

double luminance(const Components& color) {
    constexpr Components weights{0.2126, 0.7152, 0.0722};
    double sum = 0;
    for (std::size_t i = 0; i < color.size(); ++i) {
        sum +=
            weights[i] * (color[i] <= 0.04045 ? color[i] / 12.92 : std::pow((color[i] + 0.055) / 1.055, 2.4));
    }
    return sum;
}

double contrastOf(double a, double b) {
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

double leastOf(Contrast contrast) {
    return contrast == Contrast::stroke ? 1.5 : contrast == Contrast::hairline ? 2 : 3;
}

/// As far towards black or white as it takes; both are further than any of the ratios from some ground.
Components seen(const Components& ink, const Components& ground, double least) {
    const double below = luminance(ground);
    const double end = contrastOf(below, 1) > contrastOf(below, 0) ? 1 : 0;
    constexpr int steps = 16;
    Components result = ink;
    for (int step = 1; step <= steps && contrastOf(luminance(result), below) < least; ++step) {
        result = mixed({end, end, end}, ink, static_cast<double>(step) / steps);
    }
    return result;
}

} // namespace

Ink inkOf(const platform::UIColor& color, double opacity, const Look& look, Contrast contrast) {
    if (color == platform::UIColor::labelColor() && opacity == 1) {
        return {};
    }
    const platform::RGBA paint = color.resolved(look.appearance);
    const double alpha = paint.alpha * opacity;
    const bool isDark = look.appearance == platform::Appearance::dark;
    const Components ground = componentsOf(look.background.value_or(isDark ? usualDark : usualLight));
    const Components ink = mixed({paint.red, paint.green, paint.blue}, ground, alpha);
    return {.rgb = rgbOf(seen(ink, ground, leastOf(contrast))), .isColored = true, .isFaint = alpha < 1};
}

} // namespace vantor::hosts::terminal
