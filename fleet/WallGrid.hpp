// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace vantor::fleet {

/// What one density of a wall needs, in the host's own unit: points in a window, cells in a terminal.
struct WallStep {
    int width = 0; ///< of a machine, with the gap after it
    int height = 0;
    int heading = 0; ///< a group's line, with the gaps around it
    int folded = 0;  ///< the same of a folded group; 0: as much
};

/// The arrow keys, and a page at a time.
enum class WallMove { left, right, up, down, pageUp, pageDown, first, last };

/// Where each machine of a wall stands: columns from left to right, a group below the other, folded groups
/// as their heading alone. Pure. Coordinates begin at the top left of the whole wall, which may be taller
/// than the room.
class WallGrid {
public:
    struct Place {
        int x = 0;
        int y = 0;
    };

    WallGrid() = default;
    /// Headings are left out where there is one group without a name.
    WallGrid(std::span<const FleetGroup> groups, const WallStep& step, int width);

    /// The richest step, the first of them, with which all groups fit into the room; else the last.
    [[nodiscard]] static std::size_t richest(std::span<const FleetGroup> groups,
                                             std::span<const WallStep> steps, int width, int height);

    [[nodiscard]] int height() const { return m_height; } ///< of the whole wall
    [[nodiscard]] int columns() const { return m_columns; }
    /// Absent for a row in a folded group.
    [[nodiscard]] std::optional<Place> place(std::size_t row) const;
    [[nodiscard]] std::optional<int> headingAt(std::size_t group) const; ///< its y
    [[nodiscard]] std::optional<std::size_t> rowAt(int x, int y) const;
    [[nodiscard]] std::optional<std::size_t> groupAt(int y) const; ///< whose heading is there
    /// The rows from the first to the last that is wholly or partly between two heights: what must be drawn.
    /// Those of folded groups among them have no place.
    struct Range {
        std::size_t first = 0;
        std::size_t end = 0; ///< not in it
    };
    [[nodiscard]] Range between(int top, int bottom) const;
    /// From a row to another by a key; the same where there is none. The first row of a folded group stands
    /// for its heading: keys come there too, so that it can be unfolded. `room` is a page's height.
    [[nodiscard]] std::size_t moved(std::size_t row, WallMove move, int room) const;

private:
    struct Stretch {
        std::size_t first = 0;
        std::size_t size = 0;
        bool isFolded = false;
        int heading = 0;
        int top = 0;
        std::size_t line = 0; ///< its first of all lines; a folded one has one
    };
    [[nodiscard]] std::size_t lines(const Stretch& stretch) const;
    [[nodiscard]] const Stretch* stretchOf(std::size_t row) const;
    [[nodiscard]] const Stretch* stretchAt(int y) const;
    [[nodiscard]] std::size_t rowIn(std::size_t line, std::size_t column) const;

    std::vector<Stretch> m_stretches;
    WallStep m_step;
    bool m_hasHeadings = false;
    int m_columns = 1;
    std::size_t m_lines = 0;
    int m_height = 0;
};

} // namespace vantor::fleet
