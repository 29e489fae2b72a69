// SPDX-License-Identifier: MIT
#include "sysinfo/PackagesBase/Text.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vantor::PackagesBase {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The length of the well-formed character at the front of a text that is not empty; 0 where there is none.
/// The table of RFC 3629: overlong forms, surrogates and values past U+10FFFF are refused.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80) {
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    const unsigned second = byte(1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool tooLarge = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    return overlong || tooLarge ? 0 : length;
}

} // namespace

std::optional<DecimalText> DecimalText::from(std::string_view text) {
    DecimalText result;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        result.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty() || !std::ranges::all_of(text, isDigit)) {
        return std::nullopt;
    }
    result.digits = text;
    return result;
}

std::optional<std::uint64_t> DecimalText::magnitude() const {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

template<std::floating_point T>
std::optional<T> parseFloatingPoint(std::string_view text) {
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') {
        text.remove_prefix(1); // from_chars takes a minus only
    }
    T number{};
    const char* const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    const bool whole = error == std::errc() && end == last;
    return whole ? std::optional(number) : std::nullopt;
}
template std::optional<float> parseFloatingPoint<float>(std::string_view);
template std::optional<double> parseFloatingPoint<double>(std::string_view);
template std::optional<long double> parseFloatingPoint<long double>(std::string_view);

template<std::floating_point T>
std::string decimalText(T number) {
    if (std::isnan(number)) {
        return "nan"; // to_chars would show the sign of some
    }
    std::array<char, 64> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), end};
}
template std::string decimalText<float>(float);
template std::string decimalText<double>(double);
template std::string decimalText<long double>(long double);

std::string lowercased(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return result;
}

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

std::string repairedUtf8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        result += length == 0 ? std::string_view("\xEF\xBF\xBD") : bytes.substr(0, length);
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

} // namespace vantor::PackagesBase
