// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Grid.hpp"
#include "hosts/terminal/picture/Scene.hpp"

#include <cstdint>
#include <vector>

namespace vantor::hosts::terminal {

/// How the parts of a scene are arranged.
enum class Arrangement : std::uint8_t {
    below,   ///< a column for each ring, with the section's figures below it
    beside,  ///< a column for each ring, with the figures at its side
    stacked, ///< the rings in a row, below them one list of all figures
    listed,  ///< a line for each chart, each with its figures below it
    rings,   ///< the rings and the network's line
    bars,    ///< a line for each chart
    line,    ///< one line for everything
};

/// An arrangement with its measures, in cells.
struct Layout {
    Arrangement arrangement = Arrangement::line;
    std::vector<int> columnWidths; ///< of the rings' columns
    int gap = 1;                   ///< between them
    int lines = 0;                 ///< one for each section without a ring
    int ringRows = 0;              ///< the height of a ring with its caption; it is twice as wide
    int rowWidth = 0;              ///< what the widest caption and its figure need
    int listRows = 0;              ///< of the longest list of figures
    int height = 0;                ///< of everything but the keys
    bool isRoomy = false;          ///< with headings and blank lines
    bool isAiry = false;           ///< with a blank line between heading and ring
    bool hasKeys = false;
};

/// The richest arrangement that fits; of those that show the same, the one with the largest rings. `size` is
/// that of the screen, of which the keys take the last row.
[[nodiscard]] Layout layoutFor(const Scene& scene, Size size, bool isExpanded);

/// What a section's captions and figures need side by side.
[[nodiscard]] int rowWidthOf(const Scene::Section& section);

} // namespace vantor::hosts::terminal
