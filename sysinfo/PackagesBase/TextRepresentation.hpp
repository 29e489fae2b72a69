// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Representation.hpp"

namespace vantor::PackagesBase {

/// Texts. Numbers are decimal, whole and without blanks; the words for truth values are yes, true, no and
/// false in any case.
template<StringProtocol T>
struct Representation<T> {
    static std::optional<std::string> stringValue(const T& text) { return std::string(bytesOf(text)); }
    static std::optional<bool> boolValue(const T& text) {
        const std::string word = lowercased(bytesOf(text));
        if (word == "yes" || word == "true") {
            return true;
        }
        if (word == "no" || word == "false") {
            return false;
        }
        const std::optional<Int> number = parseInteger<Int>(word);
        return number ? Representation<Int>::boolValue(*number) : std::nullopt;
    }
    /// Any number of digits: a number too long for a machine word is a number that is not zero.
    static std::optional<bool> cStyleBoolValue(const T& text) {
        const std::optional<DecimalText> number = DecimalText::from(bytesOf(text));
        return number ? std::optional(!number->isZero()) : std::nullopt;
    }
    template<FixedWidthInteger I>
    static std::optional<I> intValue(const T& text) {
        return parseInteger<I>(bytesOf(text));
    }
    template<BinaryFloatingPoint F>
    static std::optional<F> floatingPointValue(const T& text) {
        const auto wide = parseFloatingPoint<Widened<F>>(bytesOf(text));
        return wide ? narrowed<F>(*wide) : std::nullopt;
    }
};

} // namespace vantor::PackagesBase
