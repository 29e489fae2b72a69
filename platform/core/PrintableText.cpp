// SPDX-License-Identifier: MIT
#include "platform/core/PrintableText.hpp"

#include <cstdint>

namespace vantor::platform {

namespace {

struct Decoded {
    char32_t character = 0;
    std::size_t length = 0; // 0: the bytes here are not UTF-8
};

/// One character from the front of a text that is not empty. Overlong forms, surrogates and values past
/// U+10FFFF are refused, as RFC 3629 asks.
Decoded decodeFront(std::string_view text) {
    const auto lead = static_cast<std::uint8_t>(text.front());
    if (lead < 0x80) {
        return {lead, 1};
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
        return {};
    }
    char32_t character = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<std::uint8_t>(text[i]);
        if ((next & 0xC0U) != 0x80U) {
            return {};
        }
        character = (character << 6) | (next & 0x3FU);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < smallest[length] || character > 0x10FFFF || surrogate) {
        return {};
    }
    return {character, length};
}

bool isHarmless(char32_t c) {
    const bool control = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool separator = c == 0x2028 || c == 0x2029;
    const bool bidirectional = c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
                               (c >= 0x2066 && c <= 0x2069);
    return !control && !separator && !bidirectional && c != 0xFEFF;
}

} // namespace

std::string printableText(std::string_view text, std::size_t longest) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    constexpr std::string_view ellipsis = "\xE2\x80\xA6";
    std::string result;
    while (!text.empty()) {
        const Decoded next = decodeFront(text);
        const bool keep = next.length != 0 && isHarmless(next.character);
        const std::string_view piece = keep ? text.substr(0, next.length) : replacement;
        if (result.size() + piece.size() > longest) {
            return result.append(ellipsis);
        }
        result.append(piece);
        text.remove_prefix(next.length == 0 ? 1 : next.length);
    }
    return result;
}

} // namespace vantor::platform
