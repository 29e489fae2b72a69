// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"
#include "platform/fleet/FleetSnapshot.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::fleet {

/// By what machines are ordered. All but `name` also say which figure gives a machine its colour; with
/// `name` that is the worst one.
enum class FleetOrder : std::uint8_t { worst, name, memory, storage, processor, network };

/// The order of that word on a command line: "worst", "name", "ram", "storage", "cpu", "network".
[[nodiscard]] std::optional<FleetOrder> orderNamed(std::string_view word);

/// How a machine is. The four colours are those of the rings (red from 84 in a hundred, orange from 68,
/// yellow from 51); `neutral` is a figure that has no level, which a rate in the network is.
enum class Band : std::uint8_t { down, red, orange, yellow, green, neutral, stale, unknown };
inline constexpr std::size_t bandCount = 8;

/// The sign that stands beside colour: × down, ~ stale, – unknown; nothing for a figure of now.
[[nodiscard]] const char* bandSign(Band band);

/// One word for programs: "down", "red", …
[[nodiscard]] const char* bandName(Band band);

/// Red and orange full, yellow and green pale: on sound machines half the memory is always used, and a wall
/// of yellow would say nothing. For a background that is light or dark. A figure without a level is a pale
/// blue; down, stale and unknown are greys.
[[nodiscard]] platform::UIColor bandColor(Band band, bool isDark);

/// The band of a used share from 0 to 1, by the whole percents that it has reached, as of a ring.
[[nodiscard]] Band shareBand(double share);

/// How a machine stands at one moment.
struct Standing {
    Band band = Band::unknown;
    /// The one that gives the band its colour: of several the one nearest its limit, of a network the busier
    /// way. Absent where the machine has not told it.
    std::optional<platform::FleetFigure> figure;
    std::optional<std::chrono::duration<double>> age; ///< of its reading; absent where there is none
};

/// A machine's standing by the figure that an order is about. It is down once it was asked in vain, unknown
/// where it has not told that figure, and stale where its reading is older than its source allows. `now` is
/// on the steady clock.
[[nodiscard]] Standing standingOf(const platform::FleetMachine& machine,
                                  const platform::FleetSnapshot& snapshot, FleetOrder order,
                                  std::chrono::nanoseconds now);

/// Where a standing belongs in an order, the least first: down, red, orange, then all the rest, among whom
/// only names count, for a share that wanders about half is nothing to move for. Of a network: down, then
/// tens of bytes a second by their power, the busiest first. By name all are equal.
[[nodiscard]] std::uint8_t bandRank(const Standing& standing, const platform::FleetMachine& machine,
                                    FleetOrder order);

} // namespace vantor::fleet
