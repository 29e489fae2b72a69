// SPDX-License-Identifier: MIT
#include "platform/propertylist/PropertyListText.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <limits>
#include <system_error>

namespace vantor::platform {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";
constexpr std::string_view base64Letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

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
    std::uint32_t bits = 0;
    unsigned held = 0; // bits not written yet
    std::size_t letters = 0;
    std::size_t padding = 0;
    for (const char c : text) {
        if (whiteSpace.find(c) != std::string_view::npos) {
            continue;
        }
        const std::size_t value = base64Letters.find(c);
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

void appendAsBase64(std::string& text, std::string_view bytes) {
    for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(3, bytes.size()))) {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            bits = (bits << 8U) | (i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : 0U);
        }
        for (std::size_t i = 0; i < 4; ++i) {
            text.push_back(i <= bytes.size() ? base64Letters[(bits >> (18 - 6 * i)) & 63U] : '=');
        }
    }
}

std::string propertyListRealText(double value) {
    if (std::isnan(value)) {
        return "nan";
    }
    if (std::isinf(value)) {
        return value > 0 ? "infinity" : "-infinity";
    }
    std::array<char, 32> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::optional<std::string> propertyListDateText(double sinceReference) {
    using namespace std::chrono;
    constexpr sys_days reference{std::chrono::year{2001} / 1 / 1}, first{std::chrono::year{0} / 1 / 1},
        end{std::chrono::year{10000} / 1 / 1};
    const double whole = std::floor(sinceReference);
    const auto secondsTo = [reference](sys_days day) {
        return static_cast<double>(seconds(day - reference).count());
    };
    if (!(whole >= secondsTo(first) && whole < secondsTo(end))) {
        return std::nullopt;
    }
    const sys_seconds time = sys_seconds(reference) + seconds(static_cast<std::int64_t>(whole));
    const sys_days day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(time - day);
    std::string text;
    const auto field = [&text](long value, std::size_t width, char separator) {
        const std::string digits = std::to_string(value);
        text.append(width - std::min(width, digits.size()), '0').append(digits).push_back(separator);
    };
    field(static_cast<int>(date.year()), 4, '-');
    field(static_cast<long>(static_cast<unsigned>(date.month())), 2, '-');
    field(static_cast<long>(static_cast<unsigned>(date.day())), 2, 'T');
    field(clock.hours().count(), 2, ':');
    field(clock.minutes().count(), 2, ':');
    field(clock.seconds().count(), 2, 'Z');
    return text;
}

} // namespace vantor::platform
