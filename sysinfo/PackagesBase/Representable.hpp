// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/TextRepresentation.hpp"

#include <concepts>
#include <optional>
#include <string>

/// Protocols for values that may stand for a value of another type: each names one conversion, which gives
/// absent where it cannot be made. Texts, `bool`, every fixed-width integer and every binary floating-point
/// type conform; a class conforms by having members of the same names (RepresentableMixin.hpp helps).
namespace vantor::PackagesBase {

template<class T, class I>
concept ConvertsToInteger = requires(const T& value) {
    { Representation<T>::template intValue<I>(value) } -> std::same_as<std::optional<I>>;
};
template<class T, class F>
concept ConvertsToFloatingPoint = requires(const T& value) {
    { Representation<T>::template floatingPointValue<F>(value) } -> std::same_as<std::optional<F>>;
};

/// Has `stringValue`, a text in UTF-8.
template<class T>
concept StringRepresentable = requires(const T& value) {
    { Representation<T>::stringValue(value) } -> std::same_as<std::optional<std::string>>;
};
/// Has `boolValue`, strict: numbers other than 0 and 1 are absent.
template<class T>
concept BoolRepresentable = requires(const T& value) {
    { Representation<T>::boolValue(value) } -> std::same_as<std::optional<bool>>;
};
/// Has `cStyleBoolValue`, as C reads numbers: everything but 0 is true.
template<class T>
concept CBoolRepresentable = requires(const T& value) {
    { Representation<T>::cStyleBoolValue(value) } -> std::same_as<std::optional<bool>>;
};

template<class T>
concept SignedIntegerRepresentable =
    ConvertsToInteger<T, std::int8_t> && ConvertsToInteger<T, std::int16_t> &&
    ConvertsToInteger<T, std::int32_t> && ConvertsToInteger<T, std::int64_t>;
template<class T>
concept UnsignedIntegerRepresentable =
    ConvertsToInteger<T, std::uint8_t> && ConvertsToInteger<T, std::uint16_t> &&
    ConvertsToInteger<T, std::uint32_t> && ConvertsToInteger<T, std::uint64_t>;
/// Has `intValue<I>` for every fixed-width integer.
template<class T>
concept IntegerRepresentable = SignedIntegerRepresentable<T> && UnsignedIntegerRepresentable<T>;
template<class T>
concept UInt64Representable = ConvertsToInteger<T, std::uint64_t>;
template<class T>
concept Int64Representable = ConvertsToInteger<T, std::int64_t>;

template<class T>
concept FloatRepresentable = ConvertsToFloatingPoint<T, float>;
template<class T>
concept DoubleRepresentable = ConvertsToFloatingPoint<T, double>;
#if VANTOR_HAS_FLOAT16
template<class T>
concept Float16Representable = ConvertsToFloatingPoint<T, Float16>;
#else
template<class T>
concept Float16Representable = true; // nothing to ask for where there is no such type
#endif
#if VANTOR_HAS_FLOAT80
template<class T>
concept Float80Representable = ConvertsToFloatingPoint<T, Float80>;
#else
template<class T>
concept Float80Representable = true;
#endif
/// Has `floatingPointValue<F>` for every binary floating-point type.
template<class T>
concept FloatingPointRepresentable =
    FloatRepresentable<T> && DoubleRepresentable<T> && Float16Representable<T> && Float80Representable<T>;

/// All of them together.
template<class T>
concept Representable = StringRepresentable<T> && BoolRepresentable<T> && CBoolRepresentable<T> &&
                        IntegerRepresentable<T> && FloatingPointRepresentable<T>;

} // namespace vantor::PackagesBase
