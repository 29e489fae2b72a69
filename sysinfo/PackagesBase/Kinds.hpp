// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Conversions.hpp"

/// Tests that ask whether the conversion of that name gives a value. They never stop the process: an integer
/// that does not fit answers false, also inside the members of a class that passes its number on.
namespace vantor::PackagesBase {

/// Whether a conversion gives a value.
[[nodiscard]] bool givesValue(const auto& conversion) {
    const IntegerConversionTest test;
    return conversion().has_value();
}

[[nodiscard]] bool isString(const StringRepresentable auto& value) {
    return givesValue([&] { return stringValue(value); });
}
[[nodiscard]] bool isBool(const BoolRepresentable auto& value) {
    return givesValue([&] { return boolValue(value); });
}
[[nodiscard]] bool isCBool(const CBoolRepresentable auto& value) {
    return givesValue([&] { return cStyleBoolValue(value); });
}

/// `example` only names the type: `isIntOfType(value, std::uint8_t{})`.
template<class T, FixedWidthInteger I>
    requires ConvertsToInteger<T, I>
[[nodiscard]] bool isIntOfType(const T& value, I /*example*/) {
    return givesValue([&] { return intValue<I>(value); });
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
    return givesValue([&] { return doubleValue(value); });
}
[[nodiscard]] bool isFloat(const FloatRepresentable auto& value) {
    return givesValue([&] { return floatValue(value); });
}
#if VANTOR_HAS_FLOAT16
[[nodiscard]] bool isFloat16(const Float16Representable auto& value) {
    return givesValue([&] { return float16Value(value); });
}
#endif

} // namespace vantor::PackagesBase
