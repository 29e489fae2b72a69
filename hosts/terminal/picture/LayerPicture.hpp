// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"
#include "platform/drawing/Layer.hpp"

#include <string_view>

namespace vantor::hosts::terminal {

/// Where a rectangle of layers comes to stand among the cells.
struct LayerPlace {
    platform::CGRect region; ///< of the layers, in points; a square
    int column = 0;          ///< of the region's upper left corner
    int row = 0;
    double rows = 0;   ///< the region's height in cells; it is twice as many columns wide
    double room = 0;   ///< the radius of what is free around a figure, in points
    int textWidth = 0; ///< the columns that a text may take, centred in the region
    int lowestRow = 0; ///< the row that a text below the region's middle moves down to, at the least
};

/// The layers of a ring that has no level: its track, its caption, and `noFigure` in the middle.
[[nodiscard]] platform::Layers withoutLevel(platform::Layers layers, std::string_view noFigure);

/// Draws layers back to front: strokes as dots, each text as one line of cells at the middle of its frame.
void drawLayers(Grid& grid, const platform::Layers& layers, const LayerPlace& place, const Look& look);

} // namespace vantor::hosts::terminal
