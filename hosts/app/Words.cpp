// SPDX-License-Identifier: MIT
#include "hosts/app/Words.hpp"

#include "controller/ByteText.hpp"
#include "hosts/qt/HostText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "platform/viewer/Viewer.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace vantor::hosts::app {

namespace {

constexpr auto nothing = "–";
constexpr std::uint64_t microsecondsInSecond = 1'000'000;

QString unitText(std::string_view key, std::uint64_t value) {
    return qt::hostText(key, "n", numberText(static_cast<double>(value), 0).toStdString());
}

} // namespace

QString isolated(const QString& text) {
    constexpr char16_t begin = 0x2066, end = 0x2069; // a text from left to right within another
    return qt::isRightToLeft() ? QChar(begin) + text + QChar(end) : text;
}

QString numberText(double value, int decimals) {
    std::array<char, 330> buffer{}; // the largest double, and some decimals
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(value),
                                   std::chars_format::fixed, decimals)
                         .ptr;
    const std::string_view plain(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const platform::LocaleSigns& signs = platform::currentViewer().localeSigns();
    const std::size_t whole = std::min(plain.find('.'), plain.size());
    std::string text = value < 0 ? signs.minus : std::string();
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (i > 0 && i < whole && (whole - i) % 3 == 0) {
            text += signs.grouping;
        }
        text += plain[i] == '.' ? signs.decimal : signs.digits.at(static_cast<std::size_t>(plain[i] - '0'));
    }
    return QString::fromStdString(text);
}

QString shareOf(double percent, int decimals) {
    if (std::isnan(percent)) {
        return QString::fromUtf8(nothing);
    }
    const double least = std::pow(10, -decimals);
    const bool isTrace = percent > 0 && percent < least / 2;
    return isolated((isTrace ? QStringLiteral("< ") : QString()) +
                    numberText(isTrace ? least : percent, decimals) + QStringLiteral(" %"));
}

QString memorySize(std::int64_t bytes) {
    return bytes == 0 ? QString::fromUtf8(nothing) : isolated(QString::fromStdString(memoryText(bytes)));
}

QString durationText(std::uint64_t microseconds) {
    constexpr std::uint64_t minute = 60, hour = 3600;
    const std::uint64_t seconds = microseconds / microsecondsInSecond;
    if (seconds >= hour) {
        const QString minutes = unitText("app_MINUTES", seconds % hour / minute);
        return unitText("app_HOURS", seconds / hour) + QLatin1Char(' ') + minutes;
    }
    return seconds >= minute ? unitText("app_MINUTES", seconds / minute) : unitText("app_SECONDS", seconds);
}

QString processesText(std::size_t count) {
    return count == 1
               ? qt::hostText("app_PROCESS")
               : qt::hostText("app_PROCESSES", "n", numberText(static_cast<double>(count), 0).toStdString());
}

QString filled(std::string_view key, std::string_view name, const QString& value, std::string_view otherName,
               const QString& otherValue) {
    const std::string first =
        platform::textWithValue(platform::NSLocalizedString(key), name, value.toStdString());
    return QString::fromStdString(platform::textWithValue(first, otherName, otherValue.toStdString()));
}

} // namespace vantor::hosts::app
