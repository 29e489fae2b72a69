// SPDX-License-Identifier: MIT
#include "hosts/terminal/text/DisplayText.hpp"

#include "platform/core/PrintableText.hpp"

#include <langinfo.h>

#include <climits>
#include <cstdint>
#include <cwchar>
#include <limits>

namespace vantor::hosts::terminal {

namespace {

constexpr char32_t firstRightToLeft = 0x0590; // Hebrew, Arabic, Syriac, Thaana, N'Ko … in one stretch
constexpr char32_t lastRightToLeft = 0x08FF;
constexpr char32_t firstPresentationForm = 0xFB1D;
constexpr char32_t lastPresentationForm = 0xFEFC;

/// The characters of a text that is known to be UTF-8.
std::u32string decoded(std::string_view text) {
    std::u32string characters;
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<std::uint8_t>(text[at]);
        const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
        char32_t character = length == 1 ? lead : lead & (0xFFU >> (length + 1));
        for (std::size_t i = 1; i < length; ++i) {
            character = (character << 6) | (static_cast<std::uint8_t>(text[at + i]) & 0x3FU);
        }
        characters.push_back(character);
        at += length;
    }
    return characters;
}

} // namespace

int columnsOf(char32_t character) {
    if (character < 0x7F) {
        return 1;
    }
    const int columns = ::wcwidth(static_cast<wchar_t>(character));
    return columns < 0 ? 1 : columns;
}

std::u32string harmlessCharacters(std::string_view text) {
    return decoded(platform::printableText(text, std::numeric_limits<std::size_t>::max()));
}

int displayWidth(std::string_view text) {
    int width = 0;
    for (const char32_t character : harmlessCharacters(text)) {
        width += columnsOf(character);
    }
    return width;
}

std::u32string clippedTo(std::u32string text, int width, char32_t ellipsis) {
    int columns = 0;
    std::size_t keep = 0; // how many characters fit beside an ellipsis
    for (std::size_t at = 0; at < text.size(); ++at) {
        columns += columnsOf(text[at]);
        if (columns < width || (columns == width && keep + 1 == text.size())) {
            keep = at + 1;
        }
    }
    if (columns <= width) {
        return text;
    }
    text.resize(width > 0 ? keep : 0);
    if (width > 0) {
        text.push_back(ellipsis);
    }
    return text;
}

bool holdsRightToLeft(std::u32string_view text) {
    for (const char32_t c : text) {
        if ((c >= firstRightToLeft && c <= lastRightToLeft) ||
            (c >= firstPresentationForm && c <= lastPresentationForm)) {
            return true;
        }
    }
    return false;
}

void appendUtf8(std::string& text, char32_t character) {
    const auto continuation = [&](unsigned shift) {
        text.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F)));
    };
    if (character < 0x80) {
        text.push_back(static_cast<char>(character));
    } else if (character < 0x800) {
        text.push_back(static_cast<char>(0xC0 | (character >> 6)));
        continuation(0);
    } else if (character < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | (character >> 12)));
        continuation(6);
        continuation(0);
    } else {
        text.push_back(static_cast<char>(0xF0 | (character >> 18)));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

std::string inLocaleCharacters(std::string_view text) {
    if (localeIsUtf8()) {
        return std::string(text);
    }
    std::string result;
    std::mbstate_t state{};
    char bytes[MB_LEN_MAX];
    for (const char32_t character : decoded(text)) {
        const std::size_t length = std::wcrtomb(bytes, static_cast<wchar_t>(character), &state);
        if (length == static_cast<std::size_t>(-1)) {
            state = {};
            result.push_back('?');
        } else {
            result.append(bytes, length);
        }
    }
    return result;
}

bool localeIsUtf8() {
    return std::string_view(::nl_langinfo(CODESET)) == "UTF-8";
}

} // namespace vantor::hosts::terminal
