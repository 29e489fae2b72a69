// SPDX-License-Identifier: MIT
#include "settings/SettingText.hpp"

#include "platform/foundation/ParseDouble.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace vantor {

namespace {

using platform::UIColor;

std::optional<SettingValue> parseFlag(std::string_view text) {
    constexpr std::array<std::string_view, 3> yes{"true", "on", "1"}, no{"false", "off", "0"};
    if (std::ranges::find(yes, text) != yes.end()) {
        return true;
    }
    return std::ranges::find(no, text) != no.end() ? std::optional<SettingValue>(false) : std::nullopt;
}

std::optional<SettingValue> parseSeconds(std::string_view text) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const bool isPlain = !text.empty() && isDigit(text.front()) && isDigit(text.back()) &&
                         std::ranges::count(text, '.') <= 1 &&
                         std::ranges::all_of(text, [&](char c) { return isDigit(c) || c == '.'; });
    const std::optional<double> seconds = isPlain ? platform::parseDouble(text) : std::nullopt;
    const bool fits = seconds && *seconds >= shortestRefresh && *seconds <= longestRefresh;
    return fits ? std::optional<SettingValue>(*seconds) : std::nullopt;
}

std::optional<SettingValue> parseColor(std::string_view text) {
    if (text == "automatic") {
        return SettingValue();
    }
    std::uint32_t value = 0;
    const bool isHexadecimal = text.size() == 7 && text.front() == '#' &&
                               std::from_chars(text.data() + 1, text.data() + text.size(), value, 16).ptr ==
                                   text.data() + text.size();
    if (!isHexadecimal) {
        return std::nullopt;
    }
    const auto component = [value](unsigned shift) {
        return static_cast<double>((value >> shift) & 0xFFU) / 255;
    };
    return UIColor::colorWithRed(component(16), component(8), component(0), 1);
}

std::string colorText(const UIColor& color) {
    const platform::RGBA painted = color.resolved(platform::Appearance::light);
    std::string text = "#";
    const auto append = [&text](double component) {
        constexpr std::string_view digits = "0123456789abcdef";
        const auto value = static_cast<std::size_t>(std::lround(component * 255));
        text.push_back(digits[value / 16]);
        text.push_back(digits[value % 16]);
    };
    append(painted.red);
    append(painted.green);
    append(painted.blue);
    if (painted.alpha < 1) {
        append(painted.alpha);
    }
    return text;
}

} // namespace

std::optional<SettingValue> parseSetting(const Setting& setting, std::string_view text) {
    switch (setting.kind) {
    case SettingKind::flag:
        return parseFlag(text);
    case SettingKind::seconds:
        return parseSeconds(text);
    case SettingKind::color:
        break;
    }
    return parseColor(text);
}

std::string settingText(const Setting& setting, const SettingValue& value) {
    if (const bool* const flag = std::get_if<bool>(&value)) {
        return *flag ? "true" : "false";
    }
    if (const double* const seconds = std::get_if<double>(&value)) {
        return secondsText(*seconds);
    }
    const auto* const color = std::get_if<UIColor>(&value);
    return color != nullptr ? colorText(*color) : std::string(setting.usual);
}

std::string secondsText(double seconds) {
    std::array<char, 400> text{}; // the largest number has 309 digits
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed);
    return {text.data(), result.ptr};
}

} // namespace vantor
