// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
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

/// Appends the lowest `width` bytes of a number, at most eight, the most significant one first.
inline void appendBigEndian(std::string& bytes, std::uint64_t value, std::size_t width) {
    for (std::size_t i = width; i-- > 0;) {
        bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(value >> (8 * i))));
    }
}

} // namespace vantor::platform
