// SPDX-License-Identifier: MIT
#include "fleet/WallGrid.hpp"

#include <algorithm>

namespace vantor::fleet {

WallGrid::WallGrid(std::span<const FleetGroup> groups, const WallStep& step, int width)
    : m_step(step), m_columns(std::max(1, step.width > 0 ? width / step.width : 1)) {
    const bool hasHeadings = groups.size() > 1 || (groups.size() == 1 && !groups.front().name.empty());
    m_stretches.reserve(groups.size());
    for (const FleetGroup& group : groups) {
        Stretch stretch;
        stretch.first = group.first;
        stretch.size = group.size;
        stretch.isFolded = group.isFolded && hasHeadings;
        stretch.heading = m_height;
        const int heading = stretch.isFolded && step.folded > 0 ? step.folded : step.heading;
        stretch.top = m_height + (hasHeadings ? heading : 0);
        stretch.line = m_lines;
        m_lines += lines(stretch);
        m_height = stretch.top + (stretch.isFolded ? 0 : static_cast<int>(lines(stretch)) * step.height);
        m_stretches.push_back(stretch);
    }
    m_hasHeadings = hasHeadings;
}

std::size_t WallGrid::richest(std::span<const FleetGroup> groups, std::span<const WallStep> steps, int width,
                              int height) {
    const auto found = std::ranges::find_if(steps, [&](const WallStep& step) {
        return step.width <= width && WallGrid(groups, step, width).height() <= height;
    });
    const auto index = static_cast<std::size_t>(found - steps.begin());
    return std::min(index, steps.empty() ? 0 : steps.size() - 1);
}

std::size_t WallGrid::lines(const Stretch& stretch) const {
    const auto columns = static_cast<std::size_t>(m_columns);
    return stretch.isFolded ? 1 : (stretch.size + columns - 1) / columns;
}

const WallGrid::Stretch* WallGrid::stretchOf(std::size_t row) const {
    const auto after = std::ranges::upper_bound(m_stretches, row, {}, &Stretch::first);
    if (after == m_stretches.begin()) {
        return nullptr;
    }
    const Stretch& stretch = *(after - 1);
    return row < stretch.first + stretch.size ? &stretch : nullptr;
}

std::optional<WallGrid::Place> WallGrid::place(std::size_t row) const {
    const Stretch* const stretch = stretchOf(row);
    if (stretch == nullptr || stretch->isFolded) {
        return std::nullopt;
    }
    const auto columns = static_cast<std::size_t>(m_columns);
    const std::size_t index = row - stretch->first;
    return Place{static_cast<int>(index % columns) * m_step.width,
                 stretch->top + static_cast<int>(index / columns) * m_step.height};
}

std::optional<int> WallGrid::headingAt(std::size_t group) const {
    return m_hasHeadings && group < m_stretches.size() ? std::optional(m_stretches[group].heading)
                                                       : std::nullopt;
}

const WallGrid::Stretch* WallGrid::stretchAt(int y) const {
    const auto after = std::ranges::upper_bound(m_stretches, y, {}, &Stretch::heading);
    return after == m_stretches.begin() || y >= m_height ? nullptr : &*(after - 1);
}

std::optional<std::size_t> WallGrid::rowAt(int x, int y) const {
    const Stretch* const stretch = stretchAt(y);
    if (stretch == nullptr || stretch->isFolded || y < stretch->top || x < 0 ||
        x >= m_columns * m_step.width) {
        return std::nullopt;
    }
    const std::size_t index =
        static_cast<std::size_t>((y - stretch->top) / m_step.height) * static_cast<std::size_t>(m_columns) +
        static_cast<std::size_t>(x / m_step.width);
    return index < stretch->size ? std::optional(stretch->first + index) : std::nullopt;
}

std::optional<std::size_t> WallGrid::groupAt(int y) const {
    const Stretch* const stretch = stretchAt(y);
    return stretch != nullptr && y < stretch->top
               ? std::optional(static_cast<std::size_t>(stretch - m_stretches.data()))
               : std::nullopt;
}

WallGrid::Range WallGrid::between(int top, int bottom) const {
    Range range;
    for (const Stretch& stretch : m_stretches) {
        if (stretch.isFolded || bottom <= stretch.top) {
            continue;
        }
        const auto columns = static_cast<std::size_t>(m_columns);
        const auto linesAbove = [&](int y) {
            return static_cast<std::size_t>(std::max(y - stretch.top, 0) / m_step.height);
        };
        const std::size_t first = std::min(stretch.size, linesAbove(top) * columns);
        const std::size_t end = std::min(stretch.size, linesAbove(bottom + m_step.height - 1) * columns);
        if (first < end) {
            range.first = range.end == 0 ? stretch.first + first : range.first;
            range.end = stretch.first + end;
        }
    }
    return range;
}

std::size_t WallGrid::rowIn(std::size_t line, std::size_t column) const {
    const Stretch& stretch = *(std::ranges::upper_bound(m_stretches, line, {}, &Stretch::line) - 1);
    if (stretch.isFolded) {
        return stretch.first;
    }
    const std::size_t index = (line - stretch.line) * static_cast<std::size_t>(m_columns) + column;
    return stretch.first + std::min(index, stretch.size - 1);
}

std::size_t WallGrid::moved(std::size_t row, WallMove move, int room) const {
    const Stretch* const stretch = stretchOf(row);
    if (stretch == nullptr) {
        return m_stretches.empty() ? row : m_stretches.front().first;
    }
    const auto columns = static_cast<std::size_t>(m_columns);
    const std::size_t index = stretch->isFolded ? 0 : row - stretch->first;
    const std::size_t line = stretch->line + index / columns;
    const std::size_t column = index % columns;
    const std::size_t lastLine = m_lines - 1;
    const auto page = static_cast<std::size_t>(std::max(1, m_step.height > 0 ? room / m_step.height : 1));
    const bool isAlone = stretch->isFolded; // its heading stands for all of its rows
    switch (move) {
    case WallMove::left:
        return column > 0 ? row - 1 : line > 0 ? rowIn(line - 1, columns - 1) : rowIn(0, 0);
    case WallMove::right:
        return !isAlone && index + 1 < stretch->size ? row + 1 : line < lastLine ? rowIn(line + 1, 0) : row;
    case WallMove::up:
        return line > 0 ? rowIn(line - 1, column) : row;
    case WallMove::down:
        return line < lastLine ? rowIn(line + 1, column) : row;
    case WallMove::pageUp:
        return rowIn(line - std::min(line, page), column);
    case WallMove::pageDown:
        return rowIn(std::min(lastLine, line + page), column);
    case WallMove::first:
        return rowIn(0, 0);
    case WallMove::last:
        break;
    }
    return rowIn(lastLine, columns - 1);
}

} // namespace vantor::fleet
