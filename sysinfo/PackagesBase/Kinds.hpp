// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Conversions.hpp"

#include <utility>

/// Tests that ask whether the conversion of that name gives a value. They never stop the process: an integer
/// that does not fit answers false.
namespace vantor::PackagesBase {

[[nodiscard]] bool isString(const StringRepresentable auto& value) {
    return stringValue(value).has_value();
}
[[nodiscard]] bool isBool(const BoolRepresentable auto& value) {
    return boolValue(value).has_value();
}
[[nodiscard]] bool isCBool(const CBoolRepresentable auto& value) {
    return cStyleBoolValue(value).has_value();
}

/// `example` only names the type: `isIntOfType(value, std::uint8_t{})`.
template<class T, FixedWidthInteger I>
    requires ConvertsToInteger<T, I>
[[nodiscard]] bool isIntOfType(const T& value, I /*example*/) {
    if constexpr (FixedWidthInteger<T>) {
        return std::in_range<I>(value); // asking intValue would be fatal
    } else {
        return intValue<I>(value).has_value();
    }
}
template<class T, UnsignedFixedWidthInteger I>
    requires ConvertsToInteger<T, I>
[[nodiscard]] bool isUIntOfType(const T& value, I example) {
    return isIntOfType(value, example);
}
template<class T, SignedFixedWidthInteger I>
    requires ConvertsToInteger<T, I>
[[nodiscard]] bool isSIntOfType(const T& value, I example) {
    return isIntOfType(value, example);
}
[[nodiscard]] bool isInt(const IntegerRepresentable auto& value) {
    return isIntOfType(value, Int{});
}
[[nodiscard]] bool isUInt(const UnsignedIntegerRepresentable auto& value) {
    return isIntOfType(value, UInt{});
}
[[nodiscard]] bool isSInt(const SignedIntegerRepresentable auto& value) {
    return isIntOfType(value, Int{});
}
[[nodiscard]] bool isUInt64(const UInt64Representable auto& value) {
    return isIntOfType(value, std::uint64_t{});
}
[[nodiscard]] bool isInt64(const Int64Representable auto& value) {
    return isIntOfType(value, std::int64_t{});
}

[[nodiscard]] bool isFloatingPoint(const FloatingPointRepresentable auto& value) {
    return doubleValue(value).has_value();
}
[[nodiscard]] bool isFloat(const FloatRepresentable auto& value) {
    return floatValue(value).has_value();
}
#if VANTOR_HAS_FLOAT16
[[nodiscard]] bool isFloat16(const Float16Representable auto& value) {
    return float16Value(value).has_value();
}
#endif

} // namespace vantor::PackagesBase
