// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Grid.hpp"

#include "hosts/terminal/text/DisplayText.hpp"
#include "platform/core/Utf8.hpp"

namespace vantor::hosts::terminal {

namespace {
constexpr char32_t leftToRightMark = 0x200E;
} // namespace

Grid::Grid(Size size)
    : m_size(size), m_cells(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height)) {}

/// Before a cell is overwritten: a wide character that loses one half loses the other as well.
void Grid::blankHalves(int column, int row) {
    if (m_cells[index(column, row)].character == 0 && column > 0) {
        m_cells[index(column - 1, row)] = {};
    }
    if (column + 1 < m_size.width && m_cells[index(column + 1, row)].character == 0) {
        m_cells[index(column + 1, row)] = {};
    }
}

void Grid::put(int column, int row, char32_t character, const Ink& ink) {
    if (isInside(column, row)) {
        blankHalves(column, row);
        m_cells[index(column, row)] = {character, 0, ink};
    }
}

void Grid::takeCells(const Grid& from, int column, int row, int count) {
    for (int at = column; at < column + count; ++at) {
        if (isInside(at, row)) {
            m_cells[index(at, row)] = from.at(at, row);
        }
    }
}

int Grid::write(int column, int row, std::string_view text, const Ink& ink) {
    return write(column, row, harmlessCharacters(text), ink);
}

int Grid::write(int column, int row, std::u32string_view characters, const Ink& ink) {
    for (const char32_t character : characters) {
        const int columns = columnsOf(character);
        if (columns == 0) {
            if (isInside(column - 1, row)) {
                m_cells[index(column - 1, row)].mark = character;
            }
            continue;
        }
        if (columns == 1 || (isInside(column, row) && isInside(column + 1, row))) {
            put(column, row, character, ink);
            if (columns == 2) {
                put(column + 1, row, U' ', ink);
                m_cells[index(column, row)].character = character;
                m_cells[index(column + 1, row)].character = 0;
            }
        }
        column += columns;
    }
    if (holdsRightToLeft(characters) && isInside(column - 1, row)) {
        m_cells[index(column - 1, row)].mark = leftToRightMark;
    }
    return column;
}

void Grid::repaint(const Ink& ink) {
    for (Cell& cell : m_cells) {
        cell.ink = ink;
    }
}

std::vector<std::string> Grid::lines() const {
    std::vector<std::string> lines;
    for (int row = 0; row < m_size.height; ++row) {
        std::string line;
        std::size_t end = 0;
        for (int column = 0; column < m_size.width; ++column) {
            const Cell& cell = at(column, row);
            if (cell.character == 0) {
                continue;
            }
            platform::appendUtf8(line, cell.character);
            if (cell.mark != 0) {
                platform::appendUtf8(line, cell.mark);
            }
            end = cell.character == U' ' ? end : line.size();
        }
        line.resize(end);
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace vantor::hosts::terminal
