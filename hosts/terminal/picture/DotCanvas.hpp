// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/DotGlyphs.hpp"
#include "platform/drawing/Layer.hpp"

#include <cstddef>
#include <vector>

namespace vantor::hosts::terminal {

/// A sheet of dots over a rectangle of cells. All lengths are in quarters of a cell's height, which is half a
/// cell's width, since a cell is about twice as high as wide. Strokes are laid on it back to front and then
/// set as characters.
class DotCanvas {
public:
    static constexpr int across = 2; ///< quarters that a cell is wide
    static constexpr int down = 4;   ///< and high
    enum class Kind : std::uint8_t { lines, strokes };

    /// For thin lines or for thick strokes, of which a character set shows each in its own way.
    DotCanvas(Size cells, Kind kind, Glyphs glyphs);

    /// Strokes one arc with round ends. A line thinner than one dot is drawn as one, so that it does not fall
    /// between the dots.
    void stroke(const platform::ArcSegment& arc, double width, const Ink& ink);
    /// Fills a rectangle.
    void fill(const platform::CGRect& rect, const Ink& ink);

    /// Sets the dots into a grid as characters. Cells without dots are left as they are.
    void set(Grid& grid, int column, int row) const;

private:
    struct DotCell {
        Dots dots = 0;
        Ink ink;
    };
    [[nodiscard]] std::size_t indexOf(int column, int row) const;
    void dot(int x, int y, const Ink& ink);
    void disc(platform::CGPoint center, double radius, const Ink& ink);
    /// The first row of dots at or below a height, and the height of a row's middle.
    [[nodiscard]] int rowAt(double y) const;
    [[nodiscard]] double middleOf(int row) const { return (row + 0.5) * m_pitch; }

    const Size m_cells;
    const Kind m_kind;
    const Glyphs m_glyphs;
    const int m_rows;     ///< of dots in a cell
    const double m_pitch; ///< of these rows
    std::vector<DotCell> m_dots;
};

} // namespace vantor::hosts::terminal
