// SPDX-License-Identifier: MIT
#include "platform/linux/TextScan.hpp"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace vantor::platform::linux_machine {

namespace {
/// Of two signs one by one: the library's searches for a set make a call for each character of the text,
/// which was half the cost of a refresh.
bool isBlank(char sign) {
    return sign == ' ' || sign == '\t';
}
} // namespace

std::optional<Line> takeLine(std::string_view& text) {
    if (text.empty()) {
        return std::nullopt;
    }
    const std::size_t end = text.find('\n');
    const Line line{text.substr(0, end), end != std::string_view::npos};
    text.remove_prefix(line.ended ? end + 1 : text.size());
    return line;
}

void skipBlanks(std::string_view& text) {
    text.remove_prefix(static_cast<std::size_t>(std::ranges::find_if_not(text, isBlank) - text.begin()));
}

std::string_view takeWord(std::string_view& text) {
    skipBlanks(text);
    const std::string_view word =
        text.substr(0, static_cast<std::size_t>(std::ranges::find_if(text, isBlank) - text.begin()));
    text.remove_prefix(word.size());
    return word;
}

std::optional<std::uint64_t> numberFrom(std::string_view word) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    return numberFrom(takeWord(text));
}

} // namespace vantor::platform::linux_machine
