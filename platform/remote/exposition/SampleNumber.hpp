// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace vantor::platform::remote {

/// A number as Prometheus and its exporters write it: decimal or, after "0x", hexadecimal, with an optional
/// sign and exponent; "NaN", "Inf" and "Infinity" in any case. Absent for anything else, for text before or
/// after the number, and for a number that no double can hold. Independent of the locale. Pure.
[[nodiscard]] std::optional<double> sampleNumber(std::string_view text);

} // namespace vantor::platform::remote
