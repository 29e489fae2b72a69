// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/WallDensity.hpp"

#include <algorithm>

namespace vantor::hosts::terminal {

namespace {

constexpr fleet::WallStep ringsStep{24, 6 * halves, halves};
constexpr fleet::WallStep lineStep{60, halves, halves};
constexpr fleet::WallStep cellStep{16, 2 * halves, halves};
// A line below which squares may begin in the middle of a cell: then no group has to fill its last row.
constexpr fleet::WallStep halfStep{1, 1, halves + 1, halves};
constexpr fleet::WallStep signStep{1, halves, halves};

/// As wide as its share of the screen is.
WallForm spread(WallDensity density, fleet::WallStep step, int width) {
    step.width = std::max(width, 1) / std::max(1, width / step.width);
    return {density, step};
}

} // namespace

std::vector<WallForm> wallForms(int width, const WallLook& look) {
    std::vector<WallForm> forms;
    if (width >= ringsStep.width) {
        forms.push_back(spread(WallDensity::rings, ringsStep, width));
    }
    forms.push_back(spread(WallDensity::line, lineStep, width));
    if (width >= cellStep.width) {
        forms.push_back(spread(WallDensity::cell, cellStep, width));
    }
    forms.push_back({WallDensity::square, look.hasHalves() ? halfStep : signStep});
    return forms;
}

} // namespace vantor::hosts::terminal
