// SPDX-License-Identifier: MIT
#include "platform/linux/TextScan.hpp"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace vantor::platform::linux_machine {

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
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
}

std::string_view takeWord(std::string_view& text) {
    skipBlanks(text);
    const std::string_view word = text.substr(0, text.find_first_of(" \t"));
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
