// SPDX-License-Identifier: MIT
#include "platform/remote/exposition/SampleNumber.hpp"

#include <charconv>
#include <system_error>

namespace vantor::platform::remote {

std::optional<double> sampleNumber(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    // The conversion takes a sign of its own, and "nan(…)" of the C library's.
    if (text.empty() || text.front() == '-' || text.back() == ')') {
        return std::nullopt;
    }
    std::chars_format format = std::chars_format::general;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        format = std::chars_format::hex;
        if (text.starts_with('-') || text.starts_with('n') || text.starts_with('i')) {
            return std::nullopt;
        }
    }
    double value = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, value, format);
    if (result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return isNegative ? -value : value;
}

} // namespace vantor::platform::remote
