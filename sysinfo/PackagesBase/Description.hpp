// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Text.hpp"

#include <ostream>
#include <sstream>
#include <string>

namespace vantor::PackagesBase {

template<class T>
[[nodiscard]] std::string description(const T& item);

/// A text inside a list or a dictionary stands in quotation marks.
template<class T>
[[nodiscard]] std::string innerDescription(const T& item) {
    const std::string text = description(item);
    return StringProtocol<T> ? "\"" + text + "\"" : text;
}

/// What a log line shows of a value, in any locale: texts as they are, numbers in decimal, `true` and
/// `false`, dictionaries as `["a": true]` (`[:]` when empty), lists as `[1, 2]`, an absent value as `nil`,
/// everything else by its `description()` or its `<<`.
template<class T>
std::string description(const T& item) {
    if constexpr (StringProtocol<T>) {
        return std::string(bytesOf(item));
    } else if constexpr (std::same_as<T, bool>) {
        return item ? "true" : "false";
    } else if constexpr (FixedWidthInteger<T>) {
        return std::to_string(item);
    } else if constexpr (std::floating_point<T>) {
        return decimalText(item);
    } else if constexpr (requires { item.description(); }) {
        return item.description();
    } else if constexpr (requires {
                             item.has_value();
                             *item;
                         }) {
        return item.has_value() ? description(*item) : "nil";
    } else if constexpr (requires { item.begin()->first; }) {
        std::string list;
        for (const auto& [key, value] : item) {
            list += (list.empty() ? "" : ", ") + innerDescription(key) + ": " + innerDescription(value);
        }
        return list.empty() ? "[:]" : "[" + list + "]";
    } else if constexpr (requires { item.begin(); }) {
        std::string list;
        for (const auto& element : item) {
            list += (list.empty() ? "" : ", ") + innerDescription(element);
        }
        return "[" + list + "]";
    } else {
        static_assert(
            requires(std::ostream& out) { out << item; },
            "a printed value needs a `description()` or an `operator<<`");
        std::ostringstream out;
        out.imbue(std::locale::classic());
        out << item;
        return out.str();
    }
}

} // namespace vantor::PackagesBase
