// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Grid.hpp"
#include "hosts/terminal/picture/Scene.hpp"

#include <cstdint>

namespace vantor::hosts::terminal {

/// How the parts of a scene are arranged.
enum class Arrangement : std::uint8_t {
    below,   ///< three columns: a ring and the section's figures below it
    beside,  ///< three columns: a ring and the figures at its side
    stacked, ///< the rings in a row, below them one list of all figures
    rings,   ///< the rings and the network's line
    bars,    ///< a line for each chart
    line,    ///< one line for everything
};

/// An arrangement with its measures, in cells.
struct Layout {
    Arrangement arrangement = Arrangement::line;
    int columns = 0;     ///< one for each section with a ring
    int lines = 0;       ///< and one line for each without
    int ringRows = 0;    ///< the height of a ring with its caption; it is twice as wide
    int columnWidth = 0; ///< of a ring's column
    int rowWidth = 0;    ///< what a caption and its figure need
    int listRows = 0;    ///< of the longest list of figures
    int height = 0;      ///< of everything but the line of keys
    bool isRoomy = false;
    bool hasKeys = false;
};

/// The richest arrangement that fits; of those that show the same, the one with the largest rings.
[[nodiscard]] Layout layoutFor(const Scene& scene, Size size);

} // namespace vantor::hosts::terminal
