// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"
#include "platform/fleet/FleetSnapshot.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace vantor::fleet {

/// How a machine is, worst first: the order of a wall. The four colours are those of the rings (red from 84
/// in a hundred, orange from 68, yellow from 51).
enum class Band : std::uint8_t { down, red, orange, yellow, green, stale, unknown };
inline constexpr std::size_t bandCount = 7;

/// The sign that stands beside colour: × down, ~ stale, – unknown; nothing for a figure of now.
[[nodiscard]] const char* bandSign(Band band);

/// Red and orange full, yellow and green pale: on sound machines half the memory is always used, and a wall
/// of yellow would say nothing. For a background that is light or dark. Down, stale and unknown are greys.
[[nodiscard]] platform::UIColor bandColor(Band band, bool isDark);

/// The band of a used share from 0 to 1.
[[nodiscard]] Band shareBand(double share);

} // namespace vantor::fleet
