// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Grid.hpp"
#include "platform/drawing/UIColor.hpp"

#include <cstdint>

namespace vantor::hosts::terminal {

/// The characters that a terminal can be trusted to have.
enum class Glyphs : std::uint8_t {
    braille, ///< UTF-8 and a full font: eight dots a cell
    block,   ///< UTF-8 on a console with the old PC font: half blocks, shades and simple lines
    ascii,   ///< anything else
};

/// How a picture is to look on the terminal at hand.
struct Look {
    Glyphs glyphs = Glyphs::braille;
    platform::Appearance appearance = platform::Appearance::dark;
    bool isRightToLeft = false; ///< sections and captions start at the right edge

    [[nodiscard]] char32_t ellipsis() const { return glyphs == Glyphs::ascii ? U'.' : U'\u2026'; }
    bool operator==(const Look&) const = default;
};

/// The ink for a colour on a background of the look's appearance. The label colour is the terminal's own
/// foreground; what lets the background through is mixed with black or white and counts as faint.
[[nodiscard]] Ink inkOf(const platform::UIColor& color, double opacity, const Look& look);

} // namespace vantor::hosts::terminal
