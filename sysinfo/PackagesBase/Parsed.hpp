// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Text.hpp"

#include <algorithm>
#include <string>
#include <string_view>

namespace vantor::PackagesBase {

/// A map from texts to texts, in any container that lists pairs.
template<class M>
concept TextMap = requires(const M& map) {
    requires StringProtocol<std::remove_cvref_t<decltype(map.begin()->first)>>;
    requires StringProtocol<std::remove_cvref_t<decltype(map.begin()->second)>>;
};

/// Replaces every occurrence of `key`, found from left to right; an empty key occurs nowhere.
[[nodiscard]] std::string replacedOccurrences(std::string_view text, std::string_view key,
                                              std::string_view value);

/// The text with every key replaced by its value, one key after the other in the map's own order. A value
/// that holds another key may or may not be replaced again: use keys that do not overlap. The result is a C
/// string's content: it ends before the first NUL.
template<StringProtocol T, TextMap Map>
[[nodiscard]] auto parsed(const T& text, const Map& usingKeys) {
    std::string result(bytesOf(text));
    for (const auto& [key, value] : usingKeys) {
        result = replacedOccurrences(result, bytesOf(key), bytesOf(value));
    }
    result.resize(std::min(result.find('\0'), result.size()));
    if constexpr (std::convertible_to<const T&, std::string_view>) {
        return result;
    } else {
        return std::u8string(result.begin(), result.end());
    }
}

/// The same in place.
template<class C, TextMap Map>
    requires(std::same_as<C, char> || std::same_as<C, char8_t>)
void parse(std::basic_string<C>& text, const Map& usingKeys) {
    text = parsed(text, usingKeys);
}

} // namespace vantor::PackagesBase
