// SPDX-License-Identifier: MIT
#include "hosts/terminal/text/DisplayText.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/core/Utf8.hpp"

#include <langinfo.h>

#include <climits>
#include <cwchar>
#include <limits>

namespace vantor::hosts::terminal {

namespace {

constexpr char32_t firstRightToLeft = 0x0590; // Hebrew, Arabic, Syriac, Thaana, N'Ko … in one stretch
constexpr char32_t lastRightToLeft = 0x08FF;
constexpr char32_t firstPresentationForm = 0xFB1D;
constexpr char32_t lastPresentationForm = 0xFEFC;

std::u32string decoded(std::string_view text) {
    std::u32string characters;
    while (!text.empty()) {
        characters.push_back(platform::takeUtf8(text).value_or(0xFFFD));
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

std::string withoutDirectionMarks(std::string text) {
    for (const std::string_view mark : {"\u200E", "\u200F"}) {
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at)) {
            text.erase(at, mark.size());
        }
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
