// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

namespace vantor {

/// The widget's diagnostic log: one decorated line a message, on standard output. Stateless; any thread.
class Logga {
public:
    /// "[2024-05-01 14:03:07 +0000][D|MAIN] message". The time is the local wall clock although the offset
    /// always reads +0000. Levels 1 to 4 are D, I, W and E, higher ones *; below 1 the message stands alone.
    /// A tag, even an empty one, goes into parentheses before the message.
    static std::string formatLine(std::string_view message, std::int64_t level,
                                  std::optional<std::string_view> tag = std::nullopt);

    /// Writes one line at level 1: the item's text, "nil" for nothing (an empty optional, any null pointer).
    /// Numbers are written in the C locale, an integer of eight bits as a number too.
    template<class T>
    static void debug(const T& item) {
        debugText(textOf(item));
    }

private:
    static std::string textOf(std::nullptr_t) { return "nil"; }
    static std::string textOf(std::nullopt_t) { return "nil"; }
    template<class T>
    static std::string textOf(const std::optional<T>& item) {
        return item ? textOf(*item) : "nil";
    }
    template<class T>
    static std::string textOf(const T& item) {
        if constexpr (!std::is_array_v<T> &&
                      requires { item == nullptr; }) { // pointers of any kind, C strings too
            if (item == nullptr) {
                return "nil";
            }
        }
        if constexpr (std::is_convertible_v<const T&, std::string_view>) {
            return std::string(std::string_view(item));
        } else if constexpr (std::is_same_v<T, bool> || std::is_same_v<T, char>) {
            return std::is_same_v<T, char> ? std::string(1, static_cast<char>(item))
                   : item                  ? "true"
                                           : "false";
        } else if constexpr (std::is_arithmetic_v<T>) { // as many digits as tell it from its neighbours
            if constexpr (std::is_floating_point_v<T>) {
                if (std::isnan(item)) {
                    return "nan"; // without its sign, which tells nobody anything
                }
            }
            std::array<char, 64> digits{};
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), item).ptr;
            return {digits.data(), end};
        } else {
            std::ostringstream stream;
            stream << item;
            return stream.str();
        }
    }
    static void debugText(std::string_view text);
};

} // namespace vantor
