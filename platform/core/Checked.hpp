// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/FatalStop.hpp"

#include <concepts>
#include <string_view>
#include <utility>

/// Arithmetic on counters and byte figures that must not wrap silently. Each operation gives the exact result
/// or stops the process with `what`, the name of the figure that broke.
namespace vantor::platform {

template<std::integral T>
[[nodiscard]] constexpr T checkedAdd(T a, T b, std::string_view what) {
    T result{};
    if (__builtin_add_overflow(a, b, &result)) {
        fatalStop(what);
    }
    return result;
}

template<std::integral T>
[[nodiscard]] constexpr T checkedSubtract(T a, T b, std::string_view what) {
    T result{};
    if (__builtin_sub_overflow(a, b, &result)) {
        fatalStop(what);
    }
    return result;
}

template<std::integral T>
[[nodiscard]] constexpr T checkedMultiply(T a, T b, std::string_view what) {
    T result{};
    if (__builtin_mul_overflow(a, b, &result)) {
        fatalStop(what);
    }
    return result;
}

/// The same number in another integer type.
template<std::integral To, std::integral From>
[[nodiscard]] constexpr To checkedConvert(From value, std::string_view what) {
    if (!std::in_range<To>(value)) {
        fatalStop(what);
    }
    return static_cast<To>(value);
}

} // namespace vantor::platform
