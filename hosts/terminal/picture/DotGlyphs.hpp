// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"

#include <cstdint>

namespace vantor::hosts::terminal {

/// The dots of one cell, two across, row by row from the upper left one in bit 0: eight of them, or six for
/// sextants.
using Dots = std::uint8_t;

/// How many rows of dots a cell has.
[[nodiscard]] int dotRowsOf(Glyphs glyphs);

/// How many different places along a line of dots a character set can show the end of a stroke at: 1 for
/// each dot, less where only halves of cells can be seen.
[[nodiscard]] double finenessOf(Glyphs glyphs);

/// The character for the dots of a thick stroke; a blank where there are too few for one.
[[nodiscard]] char32_t strokeGlyph(Dots dots, Glyphs glyphs);

/// The character for the dots of a thin line, of which coarser sets show a trace. Always of eight dots.
[[nodiscard]] char32_t lineGlyph(Dots dots, Glyphs glyphs);

} // namespace vantor::hosts::terminal
