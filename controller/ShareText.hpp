// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor {

/// A share of the processors' time: "12.50 %", with two decimals and a point in every locale.
[[nodiscard]] std::string shareText(double percent);

} // namespace vantor
