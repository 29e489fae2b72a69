// SPDX-License-Identifier: MIT
#include "fleet/WallGrid.hpp"

#include <gtest/gtest.h>

namespace {

using namespace vantor::fleet;

FleetGroup group(const char* name, std::size_t first, std::size_t size, bool isFolded = false) {
    FleetGroup made;
    made.name = name;
    made.first = first;
    made.size = size;
    made.isFolded = isFolded;
    return made;
}

constexpr WallStep cell{10, 4, 3};
constexpr WallStep square{2, 1, 1};

/// Rows 0 to 6 in lines of three, then a folded group of 4, then rows 11 and 12.
const std::vector<FleetGroup> groups{group("a", 0, 7), group("b", 7, 4, true), group("c", 11, 2)};

TEST(WallGrid, PlacesGroupsBelowEachOther) {
    const WallGrid grid(groups, cell, 39);
    EXPECT_EQ(3, grid.columns());
    EXPECT_EQ(3 + 3 * 4 + 3 + 3 + 4, grid.height());
    EXPECT_EQ(10, grid.place(4)->x);
    EXPECT_EQ(7, grid.place(4)->y);
    EXPECT_FALSE(grid.place(8));
    EXPECT_FALSE(grid.place(13));
    EXPECT_EQ(21, grid.place(11)->y);
    EXPECT_EQ(15, grid.headingAt(1));
    EXPECT_EQ(18, grid.headingAt(2));
    // One group without a name has no heading, and cannot be folded away.
    const WallGrid alone(std::vector{group("", 0, 4, true)}, cell, 5);
    EXPECT_EQ(1, alone.columns());
    EXPECT_EQ(12, alone.place(3)->y);
    EXPECT_FALSE(alone.headingAt(0));
    EXPECT_EQ(0, WallGrid({}, cell, 40).height());
}

TEST(WallGrid, FindsWhatIsPointedAt) {
    const WallGrid grid(groups, cell, 39);
    for (std::size_t row = 0; row < 13; row++) {
        if (const auto place = grid.place(row)) {
            EXPECT_EQ(row, grid.rowAt(place->x, place->y));
            EXPECT_EQ(row, grid.rowAt(place->x + 9, place->y + 3));
        }
    }
    EXPECT_FALSE(grid.rowAt(15, 12)) << "behind the last of a group";
    EXPECT_FALSE(grid.rowAt(30, 4)) << "beside the columns";
    EXPECT_FALSE(grid.rowAt(0, 16) || grid.rowAt(0, 25) || grid.rowAt(0, -1) || grid.rowAt(-1, 4));
    EXPECT_EQ(0U, grid.groupAt(0));
    EXPECT_FALSE(grid.groupAt(3));
    EXPECT_EQ(1U, grid.groupAt(15));
    EXPECT_EQ(2U, grid.groupAt(20));
    EXPECT_FALSE(grid.groupAt(25));
}

TEST(WallGrid, KnowsWhatIsToBeSeen) {
    const WallGrid grid(groups, cell, 39);
    const auto seen = [&](int top, int bottom) {
        const WallGrid::Range range = grid.between(top, bottom);
        return std::pair(range.first, range.end);
    };
    EXPECT_EQ(std::pair(std::size_t{0}, std::size_t{13}), seen(0, 100));
    EXPECT_EQ(std::pair(std::size_t{0}, std::size_t{3}), seen(6, 7));
    EXPECT_EQ(std::pair(std::size_t{3}, std::size_t{13}), seen(8, 22));
    EXPECT_EQ(std::pair(std::size_t{3}, std::size_t{6}), seen(7, 11));
    EXPECT_EQ(seen(15, 21), std::pair(std::size_t{0}, std::size_t{0})) << "headings alone";
}

TEST(WallGrid, MovesByKeys) {
    const WallGrid grid(groups, cell, 39);
    const auto moved = [&](std::size_t row, WallMove move) { return grid.moved(row, move, 8); };
    EXPECT_EQ(1U, moved(0, WallMove::right));
    EXPECT_EQ(0U, moved(0, WallMove::left));
    EXPECT_EQ(2U, moved(3, WallMove::left));
    EXPECT_EQ(0U, moved(0, WallMove::up));
    EXPECT_EQ(5U, moved(2, WallMove::down));
    EXPECT_EQ(6U, moved(5, WallMove::down)) << "a shorter line";
    EXPECT_EQ(7U, moved(6, WallMove::right)) << "a folded group can be reached";
    EXPECT_EQ(7U, moved(6, WallMove::down));
    EXPECT_EQ(11U, moved(9, WallMove::right)) << "and stands for its rows";
    EXPECT_EQ(6U, moved(7, WallMove::left));
    EXPECT_EQ(12U, moved(12, WallMove::right));
    EXPECT_EQ(7U, moved(11, WallMove::up));
    EXPECT_EQ(6U, moved(1, WallMove::pageDown));
    EXPECT_EQ(11U, moved(6, WallMove::pageDown));
    EXPECT_EQ(1U, moved(4, WallMove::pageUp));
    EXPECT_EQ(0U, moved(12, WallMove::first));
    EXPECT_EQ(12U, moved(0, WallMove::last));
    EXPECT_EQ(0U, moved(99, WallMove::down)) << "a row that went";
}

TEST(WallGrid, TakesTheRichestStepThatFits) {
    const std::vector steps{WallStep{50, 4, 3}, cell, square};
    EXPECT_EQ(0U, WallGrid::richest(groups, steps, 50, 100));
    EXPECT_EQ(1U, WallGrid::richest(groups, steps, 39, 25));
    EXPECT_EQ(2U, WallGrid::richest(groups, steps, 39, 24));
    EXPECT_EQ(2U, WallGrid::richest(groups, steps, 39, 1)) << "nothing fits";
}

} // namespace
