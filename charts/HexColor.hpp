// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/UIColor.hpp"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor {

/// A colour from a hexadecimal number ("FE9226", "#fff", "0x12345", …) and an opacity that is pinned to
/// 0...1. The low 24 bits count, whatever the length; three digits are doubled. Absent when the text, after
/// its "0x" or "#", is no signed 64-bit number in base 16.
[[nodiscard]] std::optional<platform::UIColor> colorFromHex(std::string_view hexString, double transparency);

/// A colour from components; absent when one is outside 0...255. The opacity is pinned to 0...1.
[[nodiscard]] std::optional<platform::UIColor> colorFromComponents(std::int64_t red, std::int64_t green,
                                                                   std::int64_t blue, double transparency);

} // namespace vantor
