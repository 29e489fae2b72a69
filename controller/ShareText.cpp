// SPDX-License-Identifier: MIT
#include "controller/ShareText.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace vantor {

std::string shareText(double percent) {
    if (std::isnan(percent)) {
        return "nan %"; // never with the sign that 0/0 carries on some processors
    }
    std::array<char, 320> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), percent, std::chars_format::fixed, 2).ptr;
    return std::string(digits.data(), end) + " %";
}

} // namespace vantor
