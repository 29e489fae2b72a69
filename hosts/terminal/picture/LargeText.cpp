// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/LargeText.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace vantor::hosts::terminal {

namespace {

constexpr int glyphWidth = 3; // pixels
constexpr int glyphHeight = 5;
constexpr std::string_view characters = "0123456789%-";
constexpr std::string_view widest = "100%"; // a figure keeps its size while it gets another digit

/// A row is three pixels, the leftmost in bit 2.
constexpr std::array<std::array<std::uint8_t, glyphHeight>, characters.size()> shapes{{
    {7, 5, 5, 5, 7},
    {2, 6, 2, 2, 7},
    {7, 1, 7, 4, 7},
    {7, 1, 7, 1, 7},
    {5, 5, 7, 1, 1},
    {7, 4, 7, 1, 7},
    {7, 4, 7, 5, 7},
    {7, 1, 1, 1, 1},
    {7, 5, 7, 5, 7},
    {7, 5, 7, 1, 7},
    {5, 1, 2, 4, 5},
    {0, 0, 7, 0, 0},
}};

int widthOf(std::size_t count) {
    return static_cast<int>(count) * (glyphWidth + 1) - 1;
}

} // namespace

LargeText::LargeText(std::string_view text, platform::CGPoint center, double radius, Glyphs glyphs)
    : m_text(text), m_center(center) {
    if (text.find_first_not_of(characters) != std::string_view::npos) {
        return;
    }
    const int width = widthOf(std::max(text.size(), widest.size()));
    // Pixels of half a cell, which ASCII does not have, or of two cells side by side: these are squares.
    for (const int pixel : {4, 2}) {
        const bool fits = std::hypot(width, glyphHeight) * pixel / 2 <= radius;
        if (fits && (pixel == 4 || glyphs != Glyphs::ascii)) {
            m_pixel = pixel;
            return;
        }
    }
}

void LargeText::draw(DotCanvas& canvas, const Ink& ink) const {
    // Pixels lie within cells, so that they are whole blocks.
    const auto aligned = [this](double length) { return std::round(length / m_pixel) * m_pixel; };
    const double left = aligned(m_center.x - widthOf(m_text.size()) * m_pixel / 2.0);
    const double top = aligned(m_center.y - glyphHeight * m_pixel / 2.0);
    for (std::size_t i = 0; i < m_text.size(); ++i) {
        const auto& glyph = shapes.at(characters.find(m_text[i]));
        for (int y = 0; y < glyphHeight; ++y) {
            for (int x = 0; x < glyphWidth; ++x) {
                if ((glyph.at(static_cast<std::size_t>(y)) >> (glyphWidth - 1 - x) & 1) != 0) {
                    const double column = left + (static_cast<int>(i) * (glyphWidth + 1) + x) * m_pixel;
                    const auto side = static_cast<double>(m_pixel);
                    canvas.fill({{column, top + y * side}, {side, side}}, ink);
                }
            }
        }
    }
}

} // namespace vantor::hosts::terminal
