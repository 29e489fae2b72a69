// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// How the XML form writes its scalars. White space around a number or a date does not count.
namespace vantor::platform {

/// An integer as the table holds it: the bits, and whether they are past the signed range.
struct PropertyListInteger {
    std::uint64_t bits = 0;
    bool isUnsigned = false;
};

/// Decimal with an optional sign, or hexadecimal after "0x".
[[nodiscard]] std::optional<PropertyListInteger> parsePropertyListInteger(std::string_view text);

/// Decimal, or "nan", "inf" and "infinity" in any case, with an optional sign.
[[nodiscard]] std::optional<double> parsePropertyListReal(std::string_view text);

/// "2024-05-01T14:03:07Z", as seconds since 2001-01-01.
[[nodiscard]] std::optional<double> parsePropertyListDate(std::string_view text);

/// Appends the bytes that base-64 text stands for; white space in it does not count. False when the text is
/// no base-64.
[[nodiscard]] bool appendBase64(std::string& bytes, std::string_view text);

/// Appends bytes as base-64 text, without line feeds.
void appendAsBase64(std::string& text, std::string_view bytes);

/// A real as the shortest text that reads back as the same number; "nan", "infinity" or "-infinity".
[[nodiscard]] std::string propertyListRealText(double value);

/// A date as "2024-05-01T14:03:07Z", its fraction dropped; absent for one outside of the years 0 to 9999.
[[nodiscard]] std::optional<std::string> propertyListDateText(double sinceReference);

} // namespace vantor::platform
