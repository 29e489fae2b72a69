// SPDX-License-Identifier: MIT
#include "platform/core/Utf8.hpp"

#include <cstddef>
#include <cstdint>

namespace vantor::platform {

namespace {

bool isCharacter(char32_t c) {
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

struct Decoded {
    char32_t character = 0;
    std::size_t length = 0; ///< 0: the bytes here are no character
};

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
    return character >= smallest[length] && isCharacter(character) ? Decoded{character, length} : Decoded{};
}

} // namespace

std::optional<char32_t> takeUtf8(std::string_view& text) {
    const Decoded front = decodeFront(text);
    text.remove_prefix(front.length == 0 ? 1 : front.length);
    return front.length == 0 ? std::nullopt : std::optional(front.character);
}

void appendUtf8(std::string& text, char32_t character) {
    const char32_t c = isCharacter(character) ? character : 0xFFFD;
    const auto tail = [c](unsigned shift) { return static_cast<char>(0x80U | ((c >> shift) & 0x3FU)); };
    if (c < 0x80) {
        text.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        text.append({static_cast<char>(0xC0U | (c >> 6U)), tail(0)});
    } else if (c < 0x10000) {
        text.append({static_cast<char>(0xE0U | (c >> 12U)), tail(6), tail(0)});
    } else {
        text.append({static_cast<char>(0xF0U | (c >> 18U)), tail(12), tail(6), tail(0)});
    }
}

} // namespace vantor::platform
