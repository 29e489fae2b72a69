// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/WallGrid.hpp"
#include "hosts/terminal/wall/WallInks.hpp"

#include <cstdint>
#include <vector>

namespace vantor::hosts::terminal {

/// How much of a machine a wall shows, richest first.
enum class WallDensity : std::uint8_t {
    rings,  ///< the name above three small rings
    line,   ///< one line: the name, three bars with their percentages, two rates
    cell,   ///< the name above three bars of one character and their percentages
    square, ///< a colour, or a sign
};

/// Heights on a wall are counted in halves of a cell, since two squares may share one.
inline constexpr int halves = 2;

/// A density on a screen that is so wide.
struct WallForm {
    WallDensity density = WallDensity::square;
    fleet::WallStep step; ///< in columns and half rows; what is left of the width goes to the machines
};

/// The densities that a screen of that width has room for, richest first: at least two, of which squares are
/// the last.
[[nodiscard]] std::vector<WallForm> wallForms(int width, const WallLook& look);

} // namespace vantor::hosts::terminal
