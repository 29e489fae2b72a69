// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Sheet.hpp"

namespace vantor::hosts::terminal {

/// A bar that fills a box of one row, for a share from 0 to 1: what is less or no number is an empty bar. Its
/// end is exact to half a cell.
void drawBar(Sheet& sheet, const Box& box, double share, const Ink& ink, const Ink& track);

/// One character that is higher the greater the share is; a digit where there are no such characters.
[[nodiscard]] char32_t levelGlyph(double share, const Look& look);

} // namespace vantor::hosts::terminal
