// SPDX-License-Identifier: MIT
#include "sysinfo/PackagesBase/Text.hpp"

#include "platform/core/Utf8.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace vantor::PackagesBase {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
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
        if (!platform::takeUtf8(bytes)) {
            return false;
        }
    }
    return true;
}

std::string repairedUtf8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    while (!bytes.empty()) {
        platform::appendUtf8(result, platform::takeUtf8(bytes).value_or(0xFFFD));
    }
    return result;
}

} // namespace vantor::PackagesBase
