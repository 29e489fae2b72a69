// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Look.hpp"
#include "platform/drawing/Layer.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vantor::hosts::terminal {

/// A sheet of dots over a rectangle of cells, two by four in each: since a cell is about twice as high as
/// wide, the dots are square. Strokes are laid on it back to front and then set as characters.
class DotCanvas {
public:
    static constexpr int across = 2; ///< dots of a cell
    static constexpr int down = 4;

    explicit DotCanvas(Size cells);

    /// Strokes one arc. All lengths are in dots; a line thinner than one dot is drawn as one, so that it does
    /// not fall between the dots. A hairline is what a coarser character set may reduce to a trace.
    void stroke(const platform::ArcSegment& arc, double width, bool isHairline, const Ink& ink);

    /// Sets the dots into a grid as the look's characters. Cells without dots are left as they are.
    void set(Grid& grid, int column, int row, Glyphs glyphs) const;

private:
    struct DotCell {
        std::uint8_t dots = 0; ///< the bits of Unicode's braille patterns
        bool isHairline = false;
        Ink ink;
    };
    [[nodiscard]] std::size_t indexOf(int column, int row) const;
    void dot(int x, int y, bool isHairline, const Ink& ink);
    void disc(platform::CGPoint center, double radius, bool isHairline, const Ink& ink);
    static char32_t glyph(const DotCell& cell, Glyphs glyphs);

    Size m_cells;
    std::vector<DotCell> m_dots;
};

} // namespace vantor::hosts::terminal
