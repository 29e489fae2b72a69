// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Grid.hpp"
#include "platform/drawing/UIColor.hpp"

#include <cstdint>
#include <optional>

namespace vantor::hosts::terminal {

/// The characters that a terminal can be trusted to have.
enum class Glyphs : std::uint8_t {
    solid,   ///< UTF-8 and a full font: blocks where a cell is full, and braille at the edges
    braille, ///< the same font: eight dots a cell and nothing else
    sextant, ///< Unicode 13, in terminals that draw it themselves: six blocks a cell
    octant,  ///< Unicode 16, the same: eight blocks a cell
    block,   ///< UTF-8 on a console with the old PC font: half blocks, shades and simple lines
    ascii,   ///< anything else
};

/// How a picture is to look on the terminal at hand.
struct Look {
    Glyphs glyphs = Glyphs::solid;
    platform::Appearance appearance = platform::Appearance::dark;
    bool isRightToLeft = false;                             ///< sections and captions start at the right edge
    std::optional<std::uint32_t> background = std::nullopt; ///< 0xRRGGBB; absent while it is not known

    [[nodiscard]] char32_t ellipsis() const { return glyphs == Glyphs::ascii ? U'.' : U'\u2026'; }
    bool operator==(const Look&) const = default;
};

/// How much an ink differs from the background at least, as a ratio of luminances (1 to 21, after WCAG). A
/// thin line needs more than a thick one, a text most.
enum class Contrast : std::uint8_t { stroke, hairline, text };

/// The ink for a colour on the look's background. The label colour is the terminal's own foreground; what
/// lets the background through is mixed with it and counts as faint. An ink that would hardly be seen is
/// moved towards black or white.
[[nodiscard]] Ink inkOf(const platform::UIColor& color, double opacity, const Look& look, Contrast contrast);

} // namespace vantor::hosts::terminal
