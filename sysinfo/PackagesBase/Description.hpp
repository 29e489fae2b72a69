// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/DescriptionKinds.hpp"

#include <sstream>
#include <string>

namespace vantor::PackagesBase {

template<class T>
[[nodiscard]] std::string description(const T& item);

/// Inside a list or a dictionary: a text stands in quotation marks.
template<class T>
[[nodiscard]] std::string innerDescription(const T& item) {
    return StringProtocol<T> ? "\"" + description(item) + "\"" : description(item);
}
[[nodiscard]] inline std::string innerDescription(const std::any& item) {
    std::string text;
    return withTextOrNumber(item, [&](const auto& held) { text = innerDescription(held); })
               ? text
               : description(item);
}

template<class T>
[[nodiscard]] std::string streamed(const T& item) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << item;
    return out.str();
}

[[nodiscard]] std::string descriptionOfElements(const auto& item, const auto& describe) {
    std::string list;
    for (const auto& element : item) {
        list.append(list.empty() ? "" : ", ").append(describe(element));
    }
    return list;
}

/// What a log line shows of a value, in any locale: texts and paths as they are, numbers in decimal, `true`
/// and `false`, dictionaries as `["a": true]` (`[:]` when empty), lists as `[1, 2]`, an absent value as
/// `nil`, a `std::any` by the text or number inside, an enumeration without a `<<` of its own by its number,
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
    } else if constexpr (HasDescription<T>) {
        return item.description();
    } else if constexpr (HasText<T>) {
        return description(item.string());
    } else if constexpr (HasOwnOutput<T>) { // NOLINT(bugprone-branch-clone): its place in the row matters
        return streamed(item);
    } else if constexpr (std::is_enum_v<T>) {
        return std::to_string(static_cast<std::underlying_type_t<T>>(item));
    } else if constexpr (std::same_as<T, std::any>) {
        std::string text = item.has_value() ? "(a value of another type)" : "nil";
        (void)withTextOrNumber(item, [&](const auto& held) { text = description(held); });
        return text;
    } else if constexpr (MayBeAbsent<T>) {
        return item.has_value() ? description(*item) : "nil";
    } else if constexpr (Dictionary<T>) {
        const std::string list = descriptionOfElements(item, [](const auto& element) {
            return innerDescription(element.first) + ": " + innerDescription(element.second);
        });
        return list.empty() ? "[:]" : "[" + list + "]";
    } else if constexpr (List<T>) {
        return "[" +
               descriptionOfElements(item, [](const auto& element) { return innerDescription(element); }) +
               "]";
    } else if constexpr (HasOutput<T>) {
        return streamed(item);
    } else {
        static_assert(HasOutput<T>, "a printed value needs a `description()` or an `operator<<`");
        return {};
    }
}

} // namespace vantor::PackagesBase
