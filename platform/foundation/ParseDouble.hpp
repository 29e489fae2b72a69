// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace vantor::platform {

/// A number from text, by the C library's rules in the C locale whatever the process's locale is: optional
/// sign, decimal or hexadecimal digits with fraction and exponent, "inf" and "nan" forms. Too large is
/// infinite, too small is zero or the nearest subnormal. Absent unless the whole text is the number: white
/// space at either end, a NUL anywhere and an empty text are refused. Any thread.
[[nodiscard]] std::optional<double> parseDouble(std::string_view text);

} // namespace vantor::platform
