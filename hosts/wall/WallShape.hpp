// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/wall/WallLook.hpp"

#include <cstddef>
#include <utility>
#include <vector>

namespace vantor::hosts::wall {

/// What the layout of a wall depends on: one that is equal stands already.
struct WallShape {
    std::vector<std::pair<std::size_t, bool>> groups; ///< sizes, and which are folded
    bool hasHeadings = false;
    int width = 0;
    Density density = Density::cards;
    bool operator==(const WallShape&) const = default;
};

} // namespace vantor::hosts::wall
