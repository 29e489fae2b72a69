// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/DotCanvas.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vantor::hosts::terminal {

namespace {

constexpr double turn = 2 * std::numbers::pi;

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

} // namespace

DotCanvas::DotCanvas(Size cells, Kind kind, Glyphs glyphs)
    : m_cells(cells),
      m_kind(kind),
      m_glyphs(glyphs),
      m_rows(kind == Kind::lines ? down : dotRowsOf(glyphs)),
      m_pitch(static_cast<double>(down) / m_rows),
      m_dots(static_cast<std::size_t>(cells.width) * static_cast<std::size_t>(cells.height)) {}

std::size_t DotCanvas::indexOf(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_cells.width) +
           static_cast<std::size_t>(column);
}

int DotCanvas::rowAt(double y) const {
    return std::clamp(static_cast<int>(std::floor(y / m_pitch)), 0, m_cells.height * m_rows);
}

void DotCanvas::dot(int x, int y, const Ink& ink) {
    DotCell& cell = m_dots[indexOf(x / across, y / m_rows)];
    cell.dots |= static_cast<Dots>(1U << static_cast<unsigned>(y % m_rows * across + x % across));
    cell.ink = ink;
}

void DotCanvas::disc(platform::CGPoint center, double radius, const Ink& ink) {
    const int left = std::max(0, static_cast<int>(std::floor(center.x - radius)));
    const int right = std::min(m_cells.width * across, static_cast<int>(center.x + radius) + 1);
    const int bottom = rowAt(center.y + radius + m_pitch);
    for (int y = rowAt(center.y - radius); y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            if (std::hypot(x + 0.5 - center.x, middleOf(y) - center.y) <= radius) {
                dot(x, y, ink);
            }
        }
    }
}

void DotCanvas::fill(const platform::CGRect& rect, const Ink& ink) {
    const int right = std::min(m_cells.width * across, static_cast<int>(rect.origin.x + rect.size.width));
    const int bottom = rowAt(rect.origin.y + rect.size.height);
    for (int y = rowAt(rect.origin.y); y < bottom; ++y) {
        for (int x = std::max(0, static_cast<int>(rect.origin.x)); x < right; ++x) {
            dot(x, y, ink);
        }
    }
}

void DotCanvas::stroke(const platform::ArcSegment& arc, double width, const Ink& ink) {
    const double half = std::max(width, 1.0) / 2;
    const double sweep = arc.sweep();
    const double start = sweep < 0 ? arc.startAngle.radians + sweep : arc.startAngle.radians;
    const Wedge wedge(start, std::abs(sweep));
    const double outer = arc.radius + half;
    const double inner = std::max(arc.radius - half, 0.0);
    const int bottom = rowAt(arc.center.y + outer + m_pitch);
    for (int y = rowAt(arc.center.y - outer); y < bottom; ++y) {
        const double dy = middleOf(y) - arc.center.y;
        const double reach = halfChord(outer, dy);
        const double hole = halfChord(inner, dy);
        const int right = std::min(m_cells.width * across, static_cast<int>(arc.center.x + reach) + 1);
        for (int x = std::max(0, static_cast<int>(arc.center.x - reach)); x < right; ++x) {
            const double dx = x + 0.5 - arc.center.x;
            if (std::abs(dx) < hole) {
                x = static_cast<int>(std::ceil(arc.center.x + hole - 0.5)) - 1; // on to the ring's far side
            } else if (std::abs(dx) <= reach && wedge.holds(dx, dy)) {
                dot(x, y, ink);
            }
        }
    }
    for (const double end : {start, start + std::abs(sweep)}) {
        disc({arc.center.x + arc.radius * std::cos(end), arc.center.y + arc.radius * std::sin(end)}, half,
             ink);
    }
}

void DotCanvas::set(Grid& grid, int column, int row) const {
    for (int y = 0; y < m_cells.height; ++y) {
        for (int x = 0; x < m_cells.width; ++x) {
            const DotCell& cell = m_dots[indexOf(x, y)];
            if (cell.dots == 0) {
                continue;
            }
            const char32_t glyph =
                m_kind == Kind::lines ? lineGlyph(cell.dots, m_glyphs) : strokeGlyph(cell.dots, m_glyphs);
            if (glyph != U' ') {
                grid.put(column + x, row + y, glyph, cell.ink);
            }
        }
    }
}

} // namespace vantor::hosts::terminal
