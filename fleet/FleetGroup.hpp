// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetBand.hpp"
#include "platform/fleet/FleetSnapshot.hpp"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace vantor::fleet {

/// A machine's place in the wall: its standing by the figure that is sorted by.
struct FleetRow : Standing {
    const platform::FleetMachine* machine = nullptr; ///< in the table's snapshot
};

/// How many machines are in which band.
struct FleetCounts {
    std::size_t machines = 0;
    std::size_t silent = 0; ///< those that are down or have told nothing yet
    std::array<std::size_t, bandCount> inBand{};

    [[nodiscard]] std::size_t of(Band band) const { return inBand.at(static_cast<std::size_t>(band)); }
    [[nodiscard]] std::size_t answering() const { return machines - silent; } ///< the 998 of 1,000
};

/// Machines with the same value of the label that is grouped by, or all where none is.
struct FleetGroup {
    std::string name; ///< the value; empty for machines without one, and where nothing is grouped
    bool isFolded = false;
    FleetCounts counts;
    std::size_t first = 0; ///< of its rows
    std::size_t size = 0;  ///< how many, folded or not
    /// Of those that answer and are not stale, the one with the greatest share: of the figure that is sorted
    /// by or, sorted by name or network, of all three. Its band and figure are that share's.
    std::optional<FleetRow> worst;
};

} // namespace vantor::fleet
