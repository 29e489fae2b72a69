// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/wall/Wall.hpp"

#include <chrono>

namespace vantor::hosts::terminal {

struct WallTiles;

/// Draws a wall that is laid out: header, groups and machines, what is under the cursor, and the keys.
[[nodiscard]] WallPicture drawWall(const Wall& wall, Size size, const WallLook& look,
                                   std::chrono::nanoseconds now);

/// Its lines of text. The header tells what is watched, how many are how, the worst and how old it is; the
/// detail line is about the machine under the cursor; the last line says which keys there are, or the filter.
void drawHeader(const WallTiles& tiles, const Wall& wall, std::chrono::nanoseconds now);
void drawHeading(const WallTiles& tiles, const fleet::FleetGroup& group, int row, bool isChosen);
void drawDetail(const WallTiles& tiles, const Wall& wall, int row);
[[nodiscard]] std::vector<WallKeyArea> drawWallKeys(const WallTiles& tiles, const Wall& wall, int row);

} // namespace vantor::hosts::terminal
