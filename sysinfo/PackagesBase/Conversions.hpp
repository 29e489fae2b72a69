// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Representable.hpp"

/// The conversions themselves, as functions that take any conforming value: `intValue<std::uint8_t>("42")`.
namespace vantor::PackagesBase {

[[nodiscard]] std::optional<std::string> stringValue(const StringRepresentable auto& value) {
    return Representation<std::remove_cvref_t<decltype(value)>>::stringValue(value);
}

[[nodiscard]] std::optional<bool> boolValue(const BoolRepresentable auto& value) {
    return Representation<std::remove_cvref_t<decltype(value)>>::boolValue(value);
}

[[nodiscard]] std::optional<bool> cStyleBoolValue(const CBoolRepresentable auto& value) {
    return Representation<std::remove_cvref_t<decltype(value)>>::cStyleBoolValue(value);
}

/// `cStyleBoolValue` as a Boolean (`cBoolValue(x)`) or as C code passes it on (`cBoolValue<CBool>(x)`).
template<class B = bool>
    requires(std::same_as<B, bool> || std::same_as<B, CBool>)
[[nodiscard]] std::optional<B> cBoolValue(const CBoolRepresentable auto& value) {
    const std::optional<bool> truth = cStyleBoolValue(value);
    return truth ? std::optional<B>(*truth ? 1 : 0) : std::nullopt;
}

/// From an integer: checked, and fatal where I cannot hold it. From a floating-point number: rounded, halves
/// away from zero. From a Boolean: inverted. From a text: its lossless parse.
template<FixedWidthInteger I, class T>
    requires ConvertsToInteger<T, I>
[[nodiscard]] std::optional<I> intValue(const T& value) {
    return Representation<T>::template intValue<I>(value);
}

template<SignedFixedWidthInteger I, class T>
    requires ConvertsToInteger<T, I>
[[nodiscard]] std::optional<I> sIntValue(const T& value) {
    return intValue<I>(value);
}

[[nodiscard]] std::optional<std::uint64_t> uInt64Value(const UInt64Representable auto& value) {
    return intValue<std::uint64_t>(value);
}

[[nodiscard]] std::optional<std::int64_t> int64Value(const Int64Representable auto& value) {
    return intValue<std::int64_t>(value);
}

/// From an integer: exact or absent. From a floating-point number: the nearest. From a Boolean: inverted.
template<BinaryFloatingPoint F, class T>
    requires ConvertsToFloatingPoint<T, F>
[[nodiscard]] std::optional<F> floatingPointValue(const T& value) {
    return Representation<T>::template floatingPointValue<F>(value);
}

[[nodiscard]] std::optional<float> floatValue(const FloatRepresentable auto& value) {
    return floatingPointValue<float>(value);
}

[[nodiscard]] std::optional<double> doubleValue(const DoubleRepresentable auto& value) {
    return floatingPointValue<double>(value);
}

#if VANTOR_HAS_FLOAT16
[[nodiscard]] std::optional<Float16> float16Value(const Float16Representable auto& value) {
    return floatingPointValue<Float16>(value);
}
#endif
#if VANTOR_HAS_FLOAT80
[[nodiscard]] std::optional<Float80> float80Value(const Float80Representable auto& value) {
    return floatingPointValue<Float80>(value);
}
#endif

} // namespace vantor::PackagesBase
