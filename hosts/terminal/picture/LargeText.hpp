// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/DotCanvas.hpp"

#include <string_view>

namespace vantor::hosts::terminal {

/// A percentage, or a dash, in figures that are higher than a cell.
class LargeText {
public:
    /// As large as it fits into a circle on a canvas, in quarters of a cell's height.
    LargeText(std::string_view text, platform::CGPoint center, double radius, Glyphs glyphs);

    /// False where the text holds other characters or the circle is too small: it is written in cells then.
    [[nodiscard]] bool isDrawable() const { return m_pixel > 0; }
    void draw(DotCanvas& canvas, const Ink& ink) const;

private:
    std::string_view m_text;
    platform::CGPoint m_center;
    int m_pixel = 0; ///< the side of one
};

} // namespace vantor::hosts::terminal
