// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace vantor::platform {

/// The unsigned number that up to eight bytes hold, the most significant one first.
[[nodiscard]] constexpr std::uint64_t bigEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char byte : bytes) {
        value = (value << 8U) | static_cast<std::uint8_t>(byte);
    }
    return value;
}

} // namespace vantor::platform
