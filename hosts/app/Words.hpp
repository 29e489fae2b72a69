// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstdint>
#include <string_view>

/// Figures and sentences in the user's language and digits.
namespace vantor::hosts::app {

/// A figure with its unit, to stand in a sentence of any direction.
[[nodiscard]] QString isolated(const QString& text);

/// "0.4", "1,234": with so many decimals.
[[nodiscard]] QString numberText(double value, int decimals);
/// "0.4 %"; a dash for not-a-number. What is not zero never reads as zero.
[[nodiscard]] QString shareOf(double percent, int decimals);
/// Multiples of 1024: memory. A dash for nothing.
[[nodiscard]] QString memorySize(std::int64_t bytes);
/// "1 h 12 min", "48 min", "6 s".
[[nodiscard]] QString durationText(std::uint64_t microseconds);
[[nodiscard]] QString processesText(std::size_t count);

/// A text with two placeholders filled in.
[[nodiscard]] QString filled(std::string_view key, std::string_view name, const QString& value,
                             std::string_view otherName, const QString& otherValue);

} // namespace vantor::hosts::app
