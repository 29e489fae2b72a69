// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/FetchProtocol.hpp"

namespace vantor::PackagesBase {

/// A Boolean out of an integer: 0 is false, 1 is true, any other number and an absent one are absent.
[[nodiscard]] constexpr std::optional<bool> boolFromInt(std::optional<Int> number) {
    if (!number || (*number != 0 && *number != 1)) {
        return std::nullopt;
    }
    return *number == 1;
}

/// Supplies a static `getBool`: the name read as a machine word, then `boolFromInt`. For a type that has
/// static `getString` and `getInteger`: `struct Source : FetchProtocolBoolFromIntMixin<Source>`.
template<class Self>
struct FetchProtocolBoolFromIntMixin {
    [[nodiscard]] static std::optional<bool> getBool(std::string_view name) {
        static_assert(FetchesTextAndIntegers<Self>,
                      "this type needs static `optional<string> getString(string_view)` and "
                      "`template<FixedWidthInteger T> optional<T> getInteger(string_view)`");
        return boolFromInt(Self::template getInteger<Int>(name));
    }
};

/// The same on values.
template<class Self>
struct FetchProtocolBoolFromIntInstanceMixin {
    [[nodiscard]] std::optional<bool> getBool(std::string_view name) const {
        static_assert(FetchesTextAndIntegersInstance<Self>,
                      "this type needs const `optional<string> getString(string_view)` and "
                      "`template<FixedWidthInteger T> optional<T> getInteger(string_view)`");
        return boolFromInt(static_cast<const Self&>(*this).template getInteger<Int>(name));
    }
};

template<class Self>
using FetchProtocolDataBoolFromIntMixin = FetchProtocolBoolFromIntMixin<Self>;
template<class Self>
using FetchProtocolDataBoolFromIntInstanceMixin = FetchProtocolBoolFromIntInstanceMixin<Self>;

/// A fetch protocol whose `getBool` is the one supplied above.
template<class F>
concept FetchProtocolBoolFromInt = FetchProtocol<F> && std::derived_from<F, FetchProtocolBoolFromIntMixin<F>>;
template<class F>
concept FetchProtocolDataBoolFromInt = FetchProtocolData<F> && FetchProtocolBoolFromInt<F>;
template<class F>
concept FetchProtocolBoolFromIntInstance =
    FetchProtocolInstance<F> && std::derived_from<F, FetchProtocolBoolFromIntInstanceMixin<F>>;
template<class F>
concept FetchProtocolDataBoolFromIntInstance =
    FetchProtocolDataInstance<F> && FetchProtocolBoolFromIntInstance<F>;

} // namespace vantor::PackagesBase
