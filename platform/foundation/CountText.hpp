// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/ScaledCount.hpp"
#include "platform/viewer/LocaleSigns.hpp"

#include <cstdint>
#include <string>

namespace vantor::platform {

/// A count for people: "9,999" in the digits and signs of the current viewer. Any thread.
[[nodiscard]] std::string countText(std::uint64_t count);

/// Appends the number of a scaled count, without its unit, in given digits and signs.
void appendNumber(std::string& text, const ScaledCount& scaled, const LocaleSigns& signs);

} // namespace vantor::platform
