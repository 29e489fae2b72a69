// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Text.hpp"

#include <any>
#include <ostream>
#include <string>

/// What a value offers to be described by.
namespace vantor::PackagesBase {

/// Stands for a T and converts to nothing else: finds an `operator<<` for T itself, not one for a number or a
/// character that T converts to.
template<class T>
struct Exactly {
    template<std::same_as<T> U>
    operator U() const;
};

template<class T>
concept HasOwnOutput = requires(std::ostream& out, const Exactly<T>& item) { out << item; };
template<class T>
concept HasOutput = requires(std::ostream& out, const T& item) { out << item; };
template<class T>
concept HasDescription = requires(const T& item) {
    { item.description() } -> std::convertible_to<std::string>;
};
template<class T>
concept HasText = requires(const T& item) {
    { item.string() } -> StringProtocol;
};
template<class T>
concept MayBeAbsent = requires(const T& item) {
    item.has_value();
    *item;
};
template<class T>
concept Dictionary = requires(const T& item) {
    item.begin()->first;
    item.begin()->second;
};
/// A range of itself, as a path is, is no list.
template<class T>
concept List =
    requires(const T& item) { requires !std::same_as<std::remove_cvref_t<decltype(*item.begin())>, T>; };

/// Calls `take` with the text or number inside; false where there is none or something else.
[[nodiscard]] bool withTextOrNumber(const std::any& item, const auto& take) {
    const auto takes = [&](const auto* held) {
        if (held != nullptr) {
            take(*held);
        }
        return held != nullptr;
    };
    const auto isOneOf = [&]<class... Ts>(Ts... /*examples*/) {
        return (takes(std::any_cast<Ts>(&item)) || ...);
    };
    return isOneOf(std::string(), std::string_view(), "", bool(), int(), unsigned(), long(), 0UL, 0LL, 0ULL,
                   0.0F, 0.0);
}

} // namespace vantor::PackagesBase
