// SPDX-License-Identifier: MIT
#include "platform/views/NSURL.hpp"

#include <algorithm>

namespace vantor::platform {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isLetterOrDigit(char c) {
    return isLetter(c) || (c >= '0' && c <= '9');
}

bool isSchemeCharacter(char c) {
    return isLetterOrDigit(c) || c == '+' || c == '-' || c == '.';
}

bool isUrlCharacter(char c) {
    return isLetterOrDigit(c) ||
           std::string_view("-._~:/?#[]@!$&'()*+,;=%").find(c) != std::string_view::npos;
}

} // namespace

std::optional<NSURL> NSURL::URLWithString(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || colon + 1 == text.size() ||
        !isLetter(text.front())) {
        return std::nullopt;
    }
    const bool valid = std::ranges::all_of(text.substr(0, colon), isSchemeCharacter) &&
                       std::ranges::all_of(text.substr(colon), isUrlCharacter);
    return valid ? std::optional(NSURL(text)) : std::nullopt;
}

} // namespace vantor::platform
