// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/FloatingPoint.hpp"
#include "sysinfo/PackagesBase/IntegerConversion.hpp"
#include "sysinfo/PackagesBase/Text.hpp"
#include "sysinfo/PackagesBase/Types.hpp"

#include <string>
#include <type_traits>

namespace vantor::PackagesBase {

/// How values of T convert: five operations, `stringValue`, `boolValue`, `cStyleBoolValue`, `intValue<I>` and
/// `floatingPointValue<F>`. All the names of Representable.hpp come down to these. Built-in types have theirs
/// in this folder; a class brings its own as members.
template<class T>
struct Representation;

/// A class of the user's own: its members of the same names.
template<class T>
    requires(std::is_class_v<T> && !StringProtocol<T>)
struct Representation<T> {
    static auto stringValue(const T& value)
        requires requires { value.stringValue(); }
    {
        return value.stringValue();
    }
    static auto boolValue(const T& value)
        requires requires { value.boolValue(); }
    {
        return value.boolValue();
    }
    static auto cStyleBoolValue(const T& value)
        requires requires { value.cStyleBoolValue(); }
    {
        return value.cStyleBoolValue();
    }
    template<FixedWidthInteger I>
        requires requires(const T& value) { value.template intValue<I>(); }
    static auto intValue(const T& value) {
        return value.template intValue<I>();
    }
    template<BinaryFloatingPoint F>
        requires requires(const T& value) { value.template floatingPointValue<F>(); }
    static auto floatingPointValue(const T& value) {
        return value.template floatingPointValue<F>();
    }
};

/// `bool`. Into numbers it converts inverted: true is 0 and false is 1, as the success and failure codes of
/// programs are. That is what callers rely on.
template<>
struct Representation<bool> {
    static std::optional<std::string> stringValue(bool value) { return value ? "true" : "false"; }
    static std::optional<bool> boolValue(bool value) { return value; }
    static std::optional<bool> cStyleBoolValue(bool value) { return value; }
    template<FixedWidthInteger I>
    static std::optional<I> intValue(bool value) {
        return static_cast<I>(value ? 0 : 1);
    }
    template<BinaryFloatingPoint F>
    static std::optional<F> floatingPointValue(bool value) {
        return static_cast<F>(value ? 0 : 1);
    }
};

/// Integers. `intValue` into a type that cannot hold the number is fatal; `floatingPointValue` into one that
/// cannot is absent.
template<FixedWidthInteger T>
struct Representation<T> {
    static std::optional<std::string> stringValue(T value) { return std::to_string(value); }
    static std::optional<bool> boolValue(T value) {
        return value == 0 || value == 1 ? std::optional(value == 1) : std::nullopt;
    }
    static std::optional<bool> cStyleBoolValue(T value) { return value != 0; }
    template<FixedWidthInteger I>
    static std::optional<I> intValue(T value) {
        return convertedInteger<I>(value);
    }
    template<BinaryFloatingPoint F>
    static std::optional<F> floatingPointValue(T value) {
        return exactFloatingPoint<F>(value);
    }
};

/// Floating-point numbers. `intValue` rounds halves away from zero and is absent out of range;
/// `floatingPointValue` rounds to the nearest and is never absent.
template<BinaryFloatingPoint T>
struct Representation<T> {
    static std::optional<std::string> stringValue(T value) { return decimalText(widened(value)); }
    static std::optional<bool> boolValue(T value) {
        const auto wide = widened(value);
        return wide == 0 || wide == 1 ? std::optional(wide == 1) : std::nullopt;
    }
    static std::optional<bool> cStyleBoolValue(T value) { return !(widened(value) == 0); }
    template<FixedWidthInteger I>
    static std::optional<I> intValue(T value) {
        return roundedInteger<I>(widened(value));
    }
    template<BinaryFloatingPoint F>
    static std::optional<F> floatingPointValue(T value) {
        return static_cast<F>(value);
    }
};

} // namespace vantor::PackagesBase
