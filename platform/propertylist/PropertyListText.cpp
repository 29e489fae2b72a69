// SPDX-License-Identifier: MIT
#include "platform/propertylist/PropertyListText.hpp"

#include <charconv>
#include <chrono>
#include <limits>
#include <system_error>

namespace vantor::platform {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

/// The whole text as one number; no sign but a real's minus is taken here.
template<class Number, class... Base>
std::optional<Number> wholeNumber(std::string_view text, Base... base) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base...);
    const bool whole = error == std::errc{} && end == text.data() + text.size();
    return whole ? std::optional(value) : std::nullopt;
}

/// A fixed number of digits from the front, then the separator.
std::optional<int> takeField(std::string_view& text, std::size_t width, char separator) {
    if (text.size() <= width || text[width] != separator || text.front() == '-') {
        return std::nullopt;
    }
    const std::optional<int> value = wholeNumber<int>(text.substr(0, width));
    text.remove_prefix(width + 1);
    return value;
}

} // namespace

std::optional<PropertyListInteger> parsePropertyListInteger(std::string_view text) {
    text = trimmed(text);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const std::optional<std::uint64_t> magnitude =
        wholeNumber<std::uint64_t>(text.substr(isHexadecimal ? 2 : 0), isHexadecimal ? 16 : 10);
    constexpr std::uint64_t mostNegative = std::uint64_t{1} << 63U;
    if (!magnitude || (isNegative && *magnitude > mostNegative)) {
        return std::nullopt;
    }
    return PropertyListInteger{isNegative ? ~*magnitude + 1 : *magnitude,
                               !isNegative && *magnitude >= mostNegative};
}

std::optional<double> parsePropertyListReal(std::string_view text) {
    text = trimmed(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    return wholeNumber<double>(text);
}

std::optional<double> parsePropertyListDate(std::string_view text) {
    using namespace std::chrono;
    text = trimmed(text);
    const std::optional<int> year = takeField(text, 4, '-');
    const std::optional<int> month = takeField(text, 2, '-');
    const std::optional<int> day = takeField(text, 2, 'T');
    const std::optional<int> hour = takeField(text, 2, ':');
    const std::optional<int> minute = takeField(text, 2, ':');
    const std::optional<int> second = takeField(text, 2, 'Z');
    if (!year || !month || !day || !hour || !minute || !second || !text.empty()) {
        return std::nullopt;
    }
    const year_month_day date{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                              std::chrono::day{static_cast<unsigned>(*day)}};
    if (!date.ok() || *hour > 23 || *minute > 59 || *second > 60) {
        return std::nullopt;
    }
    constexpr sys_days reference{std::chrono::year{2001} / 1 / 1};
    const seconds since = sys_days{date} - reference + hours{*hour} + minutes{*minute} + seconds{*second};
    return static_cast<double>(since.count());
}

bool appendBase64(std::string& bytes, std::string_view text) {
    constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::uint32_t bits = 0;
    unsigned held = 0; // bits not written yet
    std::size_t letters = 0;
    std::size_t padding = 0;
    for (const char c : text) {
        if (whiteSpace.find(c) != std::string_view::npos) {
            continue;
        }
        const std::size_t value = alphabet.find(c);
        padding += c == '=' ? 1 : 0;
        if (c != '=' && (value == std::string_view::npos || padding > 0)) {
            return false;
        }
        ++letters;
        if (c == '=') {
            continue;
        }
        bits = (bits << 6U) | static_cast<std::uint32_t>(value);
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(bits >> held)));
        }
    }
    return letters % 4 == 0 && padding <= 2;
}

} // namespace vantor::platform
