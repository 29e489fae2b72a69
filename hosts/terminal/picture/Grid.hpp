// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::hosts::terminal {

/// What a cell's character is drawn with. Colours are sRGB; how many of them the terminal can show is
/// settled when the picture is written out.
struct Ink {
    std::uint32_t rgb = 0;  ///< 0xRRGGBB
    bool isColored = false; ///< false: the terminal's own foreground
    bool isBold = false;
    bool isFaint = false; ///< where there are no colours: less than the plain foreground
    std::uint32_t ground = 0;
    bool hasGround = false;  ///< false: the terminal's own background; so it is where there are no colours
    bool isReversed = false; ///< foreground and background changed places: what a cursor is on
    bool operator==(const Ink&) const = default;
};

/// One place of the terminal's grid.
struct Cell {
    char32_t character = U' '; ///< 0: the right half of the character before
    char32_t mark = 0;         ///< one zero-width character on top of it; 0: none
    Ink ink;
    bool operator==(const Cell&) const = default;
};

struct Size {
    int width = 0;  ///< columns
    int height = 0; ///< rows
    bool operator==(const Size&) const = default;
};

/// A picture of character cells. What falls outside is dropped; a character of two columns is never cut in
/// half.
class Grid {
public:
    Grid() = default;
    explicit Grid(Size size);

    [[nodiscard]] Size size() const { return m_size; }
    [[nodiscard]] const Cell& at(int column, int row) const { return m_cells[index(column, row)]; }

    /// Puts one character of one column.
    void put(int column, int row, char32_t character, const Ink& ink);

    /// Takes a row's cells, which hold whole characters, from a picture of the same size.
    void takeCells(const Grid& from, int column, int row, int count);

    /// Writes a text from a column on and returns the column after it. Nothing in the text can steer the
    /// terminal. A right-to-left text is closed with a left-to-right mark, so that a terminal which reorders
    /// lines moves nothing but that text.
    int write(int column, int row, std::string_view text, const Ink& ink);
    int write(int column, int row, std::u32string_view characters, const Ink& ink);

    /// Draws all that stands there with another ink.
    void repaint(const Ink& ink);

    /// The rows as UTF-8 lines without trailing blanks and colours, for tests and logs.
    [[nodiscard]] std::vector<std::string> lines() const;

    bool operator==(const Grid&) const = default;

private:
    [[nodiscard]] std::size_t index(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_size.width) +
               static_cast<std::size_t>(column);
    }
    [[nodiscard]] bool isInside(int column, int row) const {
        return column >= 0 && row >= 0 && column < m_size.width && row < m_size.height;
    }
    void blankHalves(int column, int row);

    Size m_size;
    std::vector<Cell> m_cells;
};

} // namespace vantor::hosts::terminal
