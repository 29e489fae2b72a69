// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <cstdint>

namespace vantor {

/// How full something is, in four bands.
enum class Level : std::uint8_t { green, yellow, orange, red };

/// The band of a level in percent: green up to 50, yellow to 67, orange to 83, red from 84. Negative levels
/// run the other way by their magnitude: red to 16, orange to 33, yellow to 50, green from 51. The most
/// negative number has no magnitude and is fatal.
[[nodiscard]] Level levelOf(std::int64_t percent);

/// The status colour of a level in percent, by its band.
[[nodiscard]] platform::UIColor levelColor(std::int64_t percent);

/// The orange of the third band, made once.
[[nodiscard]] const platform::UIColor& levelOrange();

} // namespace vantor
