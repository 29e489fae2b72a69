// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

/// The few steps that every parser of kernel text is made of. They are pure, take time by the text's length,
/// and neither allocate nor throw. They stand in the header to be inlined: a refresh takes some two hundred
/// of these steps, and a call returns its optional through memory.
namespace vantor::platform::linux {

/// One line of a text, without its line feed.
struct Line {
    std::string_view text;
    bool ended = false; ///< false: the text stopped before a line feed, so the line may be cut short
};

/// Takes the first line off a text; absent at the end.
[[nodiscard]] inline std::optional<Line> takeLine(std::string_view& text) {
    if (text.empty()) {
        return std::nullopt;
    }
    const std::size_t end = text.find('\n');
    const Line line{text.substr(0, end), end != std::string_view::npos};
    text.remove_prefix(line.ended ? end + 1 : text.size());
    return line;
}

/// Takes the text up to a separator off, together with the separator; all of the text where there is none.
[[nodiscard]] inline std::string_view takeUntil(std::string_view& text, char separator) {
    const std::size_t at = std::min(text.find(separator), text.size());
    const std::string_view piece = text.substr(0, at);
    text.remove_prefix(std::min(at + 1, text.size()));
    return piece;
}

/// Whether a character is a blank or a tab. They are looked for one by one, since the library's searches for
/// a set of characters make a call for each character of the text, which was half the cost of a refresh.
[[nodiscard]] inline bool isBlank(char character) {
    return character == ' ' || character == '\t';
}

/// Takes leading blanks and tabs off.
inline void skipBlanks(std::string_view& text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
}

/// Takes a word (all bytes up to a blank or tab) with the blanks before it off a text; empty at the end.
[[nodiscard]] inline std::string_view takeWord(std::string_view& text) {
    skipBlanks(text);
    std::size_t length = 0;
    while (length < text.size() && !isBlank(text[length])) {
        ++length;
    }
    const std::string_view word = text.substr(0, length);
    text.remove_prefix(length);
    return word;
}

/// A whole word as an unsigned number. Absent where it is empty, holds anything but the base's digits, or
/// does not fit in 64 bits.
[[nodiscard]] inline std::optional<std::uint64_t> numberFrom(std::string_view word, int base = 10) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, base);
    if (error != std::errc() || end != word.data() + word.size()) {
        return std::nullopt;
    }
    return value;
}

/// `takeWord` and `numberFrom` in one.
[[nodiscard]] inline std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    return numberFrom(takeWord(text));
}

} // namespace vantor::platform::linux
