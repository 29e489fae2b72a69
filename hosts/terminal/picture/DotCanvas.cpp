// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/DotCanvas.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace vantor::hosts::terminal {

namespace {

constexpr double turn = 2 * std::numbers::pi;
constexpr char32_t brailleBlank = 0x2800;
constexpr std::uint8_t upperHalf = 0b00011011; // dots 1, 2, 4 and 5
constexpr std::uint8_t lowerHalf = 0b11100100; // dots 3, 6, 7 and 8

/// The bit of a dot in Unicode's braille patterns: down the left column, down the right one, then the fourth
/// row, which came later.
std::uint8_t dotBit(int x, int y) {
    constexpr std::uint8_t bits[DotCanvas::down][DotCanvas::across] = {
        {0x01, 0x08}, {0x02, 0x10}, {0x04, 0x20}, {0x40, 0x80}};
    return bits[y][x];
}

/// Whether enough dots of a half are lit for the half to count.
bool isLit(std::uint8_t dots, std::uint8_t half) {
    return std::popcount(static_cast<std::uint8_t>(dots & half)) >= 2;
}

/// Half the length of the chord that a circle cuts out of a row at a distance from its centre.
double halfChord(double radius, double distance) {
    return std::sqrt(std::max(radius * radius - distance * distance, 0.0));
}

/// The directions from an angle on, as far as a sweep goes. Told by two cross products: a ring has thousands
/// of dots, and an arc tangent for each would be most of a picture's cost.
class Wedge {
public:
    Wedge(double start, double sweep)
        : m_startX(std::cos(start)),
          m_startY(std::sin(start)),
          m_endX(std::cos(start + sweep)),
          m_endY(std::sin(start + sweep)),
          m_isWide(sweep > std::numbers::pi),
          m_isWhole(sweep >= turn) {}

    [[nodiscard]] bool holds(double x, double y) const {
        const bool afterStart = m_startX * y - m_startY * x >= 0;
        const bool beforeEnd = x * m_endY - y * m_endX >= 0;
        return m_isWhole || (m_isWide ? afterStart || beforeEnd : afterStart && beforeEnd);
    }

private:
    double m_startX, m_startY, m_endX, m_endY;
    bool m_isWide, m_isWhole;
};

char32_t blockGlyph(std::uint8_t dots) {
    const bool upper = isLit(dots, upperHalf);
    const bool lower = isLit(dots, lowerHalf);
    return upper && lower ? U'\u2588' : upper ? U'\u2580' : lower ? U'\u2584' : U' ';
}

} // namespace

DotCanvas::DotCanvas(Size cells)
    : m_cells(cells),
      m_dots(static_cast<std::size_t>(cells.width) * static_cast<std::size_t>(cells.height)) {}

std::size_t DotCanvas::indexOf(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_cells.width) +
           static_cast<std::size_t>(column);
}

void DotCanvas::dot(int x, int y, bool isHairline, const Ink& ink) {
    DotCell& cell = m_dots[indexOf(x / across, y / down)];
    cell.dots |= dotBit(x % across, y % down);
    cell.isHairline = isHairline;
    cell.ink = ink;
}

void DotCanvas::disc(platform::CGPoint center, double radius, bool isHairline, const Ink& ink) {
    const auto first = [](double edge) { return std::max(0, static_cast<int>(std::floor(edge))); };
    const int right = std::min(m_cells.width * across, static_cast<int>(center.x + radius) + 1);
    const int bottom = std::min(m_cells.height * down, static_cast<int>(center.y + radius) + 1);
    for (int y = first(center.y - radius); y < bottom; ++y) {
        for (int x = first(center.x - radius); x < right; ++x) {
            if (std::hypot(x + 0.5 - center.x, y + 0.5 - center.y) <= radius) {
                dot(x, y, isHairline, ink);
            }
        }
    }
}

void DotCanvas::stroke(const platform::ArcSegment& arc, double width, bool isHairline, const Ink& ink) {
    const double half = std::max(width, 1.0) / 2;
    const double sweep = arc.sweep();
    const double start = sweep < 0 ? arc.startAngle.radians + sweep : arc.startAngle.radians;
    const Wedge wedge(start, std::abs(sweep));
    const double outer = arc.radius + half;
    const double inner = std::max(arc.radius - half, 0.0);
    const int bottom = std::min(m_cells.height * down, static_cast<int>(arc.center.y + outer) + 1);
    for (int y = std::max(0, static_cast<int>(arc.center.y - outer)); y < bottom; ++y) {
        const double dy = y + 0.5 - arc.center.y;
        const double reach = halfChord(outer, dy);
        const double hole = halfChord(inner, dy);
        const int right = std::min(m_cells.width * across, static_cast<int>(arc.center.x + reach) + 1);
        for (int x = std::max(0, static_cast<int>(arc.center.x - reach)); x < right; ++x) {
            const double dx = x + 0.5 - arc.center.x;
            if (std::abs(dx) < hole) {
                x = static_cast<int>(std::ceil(arc.center.x + hole - 0.5)) - 1; // on to the ring's far side
            } else if (std::abs(dx) <= reach && wedge.holds(dx, dy)) {
                dot(x, y, isHairline, ink);
            }
        }
    }
    for (const double end : {start, start + std::abs(sweep)}) {
        disc({arc.center.x + arc.radius * std::cos(end), arc.center.y + arc.radius * std::sin(end)}, half,
             isHairline, ink);
    }
}

char32_t DotCanvas::glyph(const DotCell& cell, Glyphs glyphs) {
    switch (glyphs) {
    case Glyphs::braille:
        return brailleBlank + cell.dots;
    case Glyphs::block:
        return cell.isHairline ? U'\u00B7' : blockGlyph(cell.dots);
    case Glyphs::ascii:
        break;
    }
    return cell.isHairline ? U'.' : std::popcount(cell.dots) >= 3 ? U'#' : U' ';
}

void DotCanvas::set(Grid& grid, int column, int row, Glyphs glyphs) const {
    for (int y = 0; y < m_cells.height; ++y) {
        for (int x = 0; x < m_cells.width; ++x) {
            const DotCell& cell = m_dots[indexOf(x, y)];
            if (cell.dots != 0) {
                grid.put(column + x, row + y, glyph(cell, glyphs), cell.ink);
            }
        }
    }
}

} // namespace vantor::hosts::terminal
