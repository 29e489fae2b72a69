// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Kinds.hpp"

namespace vantor::PackagesBase {

/// Supplies a class with the member forms that follow from its own five: `struct Level :
/// RepresentableMixin<Level>` with const members `stringValue()`, `boolValue()`, `cStyleBoolValue()`,
/// `intValue<I>()` and `floatingPointValue<F>()`, each giving an optional, is `Representable`.
template<class Self>
class RepresentableMixin {
public:
    template<SignedFixedWidthInteger I>
    [[nodiscard]] std::optional<I> sIntValue() const {
        return PackagesBase::sIntValue<I>(self());
    }
    [[nodiscard]] std::optional<std::uint64_t> uInt64Value() const {
        return PackagesBase::uInt64Value(self());
    }
    [[nodiscard]] std::optional<std::int64_t> int64Value() const { return PackagesBase::int64Value(self()); }
    [[nodiscard]] std::optional<float> floatValue() const { return PackagesBase::floatValue(self()); }
    [[nodiscard]] std::optional<double> doubleValue() const { return PackagesBase::doubleValue(self()); }
#if VANTOR_HAS_FLOAT16
    [[nodiscard]] std::optional<Float16> float16Value() const { return PackagesBase::float16Value(self()); }
    [[nodiscard]] bool isFloat16() const { return PackagesBase::isFloat16(self()); }
#endif
#if VANTOR_HAS_FLOAT80
    [[nodiscard]] std::optional<Float80> float80Value() const { return PackagesBase::float80Value(self()); }
#endif
    template<class B = bool>
    [[nodiscard]] std::optional<B> cBoolValue() const {
        return PackagesBase::cBoolValue<B>(self());
    }

    [[nodiscard]] bool isString() const { return PackagesBase::isString(self()); }
    [[nodiscard]] bool isBool() const { return PackagesBase::isBool(self()); }
    [[nodiscard]] bool isCBool() const { return PackagesBase::isCBool(self()); }
    [[nodiscard]] bool isInt() const { return PackagesBase::isInt(self()); }
    [[nodiscard]] bool isUInt() const { return PackagesBase::isUInt(self()); }
    [[nodiscard]] bool isSInt() const { return PackagesBase::isSInt(self()); }
    [[nodiscard]] bool isInt64() const { return PackagesBase::isInt64(self()); }
    [[nodiscard]] bool isUInt64() const { return PackagesBase::isUInt64(self()); }
    [[nodiscard]] bool isIntOfType(FixedWidthInteger auto example) const {
        return PackagesBase::isIntOfType(self(), example);
    }
    [[nodiscard]] bool isUIntOfType(UnsignedFixedWidthInteger auto example) const {
        return PackagesBase::isUIntOfType(self(), example);
    }
    [[nodiscard]] bool isSIntOfType(SignedFixedWidthInteger auto example) const {
        return PackagesBase::isSIntOfType(self(), example);
    }
    [[nodiscard]] bool isFloatingPoint() const { return PackagesBase::isFloatingPoint(self()); }
    [[nodiscard]] bool isFloat() const { return PackagesBase::isFloat(self()); }

private:
    [[nodiscard]] const Self& self() const {
        static_assert(StringRepresentable<Self>, "this type needs const `optional<string> stringValue()`");
        static_assert(BoolRepresentable<Self>, "this type needs const `optional<bool> boolValue()`");
        static_assert(CBoolRepresentable<Self>, "this type needs const `optional<bool> cStyleBoolValue()`");
        static_assert(
            IntegerRepresentable<Self>,
            "this type needs const `template<FixedWidthInteger I> optional<I> intValue()` for every I");
        static_assert(FloatingPointRepresentable<Self>,
                      "this type needs const `template<BinaryFloatingPoint F> optional<F> "
                      "floatingPointValue()` for every F");
        return static_cast<const Self&>(*this);
    }
};

} // namespace vantor::PackagesBase
