// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

namespace vantor {

/// The widget's diagnostic log: one decorated line a message, on standard output. Stateless; any thread.
class Logga {
public:
    /// "[2024-05-01 14:03:07 +0000][D|MAIN] message". The time is the local wall clock although the offset
    /// always reads +0000. Levels 1 to 4 are D, I, W and E, higher ones *; below 1 the message stands alone.
    /// A tag, even an empty one, goes into parentheses before the message.
    static std::string formatLine(std::string_view message, std::int64_t level,
                                  std::optional<std::string_view> tag = std::nullopt);

    /// Writes one line at level 1: the item's text, "nil" for nothing.
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
        if constexpr (std::is_convertible_v<const T&, std::string_view>) {
            return std::string(std::string_view(item));
        } else {
            std::ostringstream stream;
            stream << std::boolalpha << item;
            return stream.str();
        }
    }
    static void debugText(std::string_view text);
};

} // namespace vantor
