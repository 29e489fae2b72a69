// SPDX-License-Identifier: MIT
#include "charts/HexColor.hpp"

#include <algorithm>
#include <charconv>
#include <string>

namespace vantor {

namespace {

/// Lower case for the letters that a hexadecimal number can hold; the locale has no say in it.
std::string lowerCased(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

std::string without(std::string text, std::string_view piece) {
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at)) {
        text.erase(at, piece.size());
    }
    return text;
}

std::string digitsOf(std::string_view hexString) {
    const std::string lower = lowerCased(hexString);
    std::string digits = lower.starts_with("0x")      ? without(lower, "0x")
                         : hexString.starts_with('#') ? without(std::string(hexString), "#")
                                                      : std::string(hexString);
    if (digits.size() == 3) {
        digits = {digits[0], digits[0], digits[1], digits[1], digits[2], digits[2]};
    }
    return digits;
}

std::optional<std::int64_t> parseHex(std::string_view digits) {
    if (digits.starts_with('+')) { // from_chars takes no plus sign, and "+-1" is no number
        digits.remove_prefix(1);
        if (digits.starts_with('-')) {
            return std::nullopt;
        }
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    const bool whole = error == std::errc() && end == digits.data() + digits.size();
    return whole ? std::optional(value) : std::nullopt;
}

double pinned(double opacity) {
    return opacity < 0 ? 0 : opacity > 1 ? 1 : opacity;
}

} // namespace

std::optional<platform::UIColor> colorFromHex(std::string_view hexString, double transparency) {
    const std::optional<std::int64_t> value = parseHex(digitsOf(hexString));
    if (!value) {
        return std::nullopt;
    }
    return colorFromComponents((*value >> 16) & 0xFF, (*value >> 8) & 0xFF, *value & 0xFF,
                               pinned(transparency));
}

std::optional<platform::UIColor> colorFromComponents(std::int64_t red, std::int64_t green, std::int64_t blue,
                                                     double transparency) {
    for (const std::int64_t component : {red, green, blue}) {
        if (component < 0 || component > 255) {
            return std::nullopt;
        }
    }
    const auto fraction = [](std::int64_t component) { return static_cast<double>(component) / 255.0; };
    return platform::UIColor::colorWithRed(fraction(red), fraction(green), fraction(blue),
                                           pinned(transparency));
}

} // namespace vantor
