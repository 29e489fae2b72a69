// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Types.hpp"

#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace vantor::PackagesBase {

/// Every text type: what converts to a view of bytes, in UTF-8.
template<class T>
concept StringProtocol = !std::is_null_pointer_v<T> && (std::convertible_to<const T&, std::string_view> ||
                                                        std::convertible_to<const T&, std::u8string_view>);

/// The bytes of a text, without a copy.
template<StringProtocol T>
[[nodiscard]] std::string_view bytesOf(const T& text) {
    if constexpr (std::convertible_to<const T&, std::string_view>) {
        return text;
    } else {
        const std::u8string_view view = text;
        return {reinterpret_cast<const char*>(view.data()), view.size()};
    }
}

/// A decimal integer as its sign and its digits. Absent where the text is anything else: blanks, a point, an
/// empty text, no digit after the sign.
struct DecimalText {
    bool negative = false;
    std::string_view digits; ///< at least one, leading zeros kept

    [[nodiscard]] static std::optional<DecimalText> from(std::string_view text);
    [[nodiscard]] bool isZero() const { return digits.find_first_not_of('0') == std::string_view::npos; }
    /// Absent where 64 bits cannot hold it.
    [[nodiscard]] std::optional<std::uint64_t> magnitude() const;
};

/// The lossless parse of a decimal integer with an optional sign: the number, or absent where the text is not
/// one or T cannot hold it. Knows no locale.
template<FixedWidthInteger T>
[[nodiscard]] std::optional<T> parseInteger(std::string_view text) {
    const std::optional<DecimalText> decimal = DecimalText::from(text);
    const std::optional<std::uint64_t> magnitude = decimal ? decimal->magnitude() : std::nullopt;
    if (!magnitude) {
        return std::nullopt;
    }
    constexpr auto top = static_cast<std::uint64_t>(std::numeric_limits<T>::max());
    constexpr std::uint64_t bottom = std::is_signed_v<T> ? top + 1 : 0;
    if (*magnitude > (decimal->negative ? bottom : top)) {
        return std::nullopt;
    }
    return static_cast<T>(decimal->negative ? 0 - *magnitude : *magnitude);
}

/// The number nearest to a decimal text ("2.5", "-1e3", "inf", "nan"; a leading "+" is accepted). Absent
/// where the text is not one, or is finite and out of T's range. Knows no locale.
template<std::floating_point T>
[[nodiscard]] std::optional<T> parseFloatingPoint(std::string_view text);
extern template std::optional<float> parseFloatingPoint<float>(std::string_view);
extern template std::optional<double> parseFloatingPoint<double>(std::string_view);
extern template std::optional<long double> parseFloatingPoint<long double>(std::string_view);

/// The shortest decimal text that reads back as the same number: "2.5", "1e+300", "inf", "nan".
template<std::floating_point T>
[[nodiscard]] std::string decimalText(T number);
extern template std::string decimalText<float>(float);
extern template std::string decimalText<double>(double);
extern template std::string decimalText<long double>(long double);

/// A copy with the letters A to Z in lower case, in any locale.
[[nodiscard]] std::string lowercased(std::string_view text);

/// Whether the bytes are well-formed UTF-8.
[[nodiscard]] bool isUtf8(std::string_view bytes);

/// The bytes as UTF-8: each byte that belongs to no well-formed character becomes U+FFFD.
[[nodiscard]] std::string repairedUtf8(std::string_view bytes);

} // namespace vantor::PackagesBase
