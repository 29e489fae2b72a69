// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Types.hpp"

#include <bit>
#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

/// The arithmetic below the conversions, where the standard library leaves half floats out or a cast would be
/// undefined.
namespace vantor::PackagesBase {

/// A standard type that holds every value of F: float for half floats, else F itself.
template<BinaryFloatingPoint F>
using Widened = std::conditional_t<std::floating_point<F>, F, float>;

template<BinaryFloatingPoint F>
[[nodiscard]] constexpr Widened<F> widened(F value) {
    return static_cast<Widened<F>>(value);
}

/// Back to F; absent where a finite number would become infinite.
template<BinaryFloatingPoint F>
[[nodiscard]] std::optional<F> narrowed(Widened<F> value) {
    const F result = static_cast<F>(value);
    const bool overflow = std::isfinite(value) && !std::isfinite(widened(result));
    return overflow ? std::nullopt : std::optional(result);
}

/// The bits of a number's fraction, the leading one included, and the width of the largest power of two.
template<BinaryFloatingPoint F>
struct FloatingPointLimits {
    static constexpr int digits = std::floating_point<F> ? std::numeric_limits<Widened<F>>::digits : 11;
    static constexpr int maxBits =
        std::floating_point<F> ? std::numeric_limits<Widened<F>>::max_exponent : 16;
};

/// The integer as an F, or absent where F cannot hold it exactly: more significant bits than F has, or too
/// large. Decided on the bits, so that no rounding mode plays a part.
template<BinaryFloatingPoint F, FixedWidthInteger I>
[[nodiscard]] constexpr std::optional<F> exactFloatingPoint(I value) {
    const auto bits = static_cast<std::uint64_t>(value);
    const std::uint64_t magnitude = value < 0 ? 0 - bits : bits;
    const int width = static_cast<int>(std::bit_width(magnitude)); // some libraries give the argument's type
    const int significant = magnitude == 0 ? 0 : width - std::countr_zero(magnitude);
    if (significant > FloatingPointLimits<F>::digits || width > FloatingPointLimits<F>::maxBits) {
        return std::nullopt;
    }
    return static_cast<F>(value);
}

/// The nearest integer, halves away from zero; absent where I cannot hold it, for infinities and NaN.
template<FixedWidthInteger I, std::floating_point F>
[[nodiscard]] std::optional<I> roundedInteger(F value) {
    const F rounded = std::round(value);
    const F end = std::ldexp(F(1), std::numeric_limits<I>::digits); // one past the largest, exact in every F
    const F begin = std::is_signed_v<I> ? -end : F(0);
    const bool fits = rounded >= begin && rounded < end; // false for NaN
    return fits ? std::optional(static_cast<I>(rounded)) : std::nullopt;
}

} // namespace vantor::PackagesBase
