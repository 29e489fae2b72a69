// SPDX-License-Identifier: MIT
#include "platform/foundation/ByteCountWords.hpp"

namespace vantor::platform {

namespace {

using Units = std::array<std::string_view, 6>;
constexpr Units symbols{"KB", "MB", "GB", "TB", "PB", "EB"};
constexpr Units octets{"ko", "Mo", "Go", "To", "Po", "Eo"};
constexpr Units russian{"КБ", "МБ", "ГБ", "ТБ", "ПБ", "ЭБ"};

// Byte words and plural classes as the Unicode locale data has them.
constexpr std::array<ByteCountWords, 7> known{{
    {"en", symbols, "Zero KB", "byte", "bytes", "bytes", false, true},
    {"fr", octets, "Zéro ko", "octet", "octets", "octets", false, true},
    {"ru", russian, "", "байт", "байта", "байт", true, true},
    {"it", symbols, "", "byte", "byte", "byte", false, true},
    {"de", symbols, "", "Byte", "Byte", "Byte", false, true},
    {"ja", symbols, "", "バイト", "バイト", "バイト", false, true},
    {"zh", symbols, "", "字节", "字节", "字节", false, false},
}};
constexpr ByteCountWords unknown{"", symbols, "", "byte", "bytes", "bytes", false, true};

} // namespace

const ByteCountWords& byteCountWords(std::string_view language) {
    const std::string_view primary = language.substr(0, language.find_first_of("-_"));
    for (const ByteCountWords& words : known) {
        if (words.language == primary) {
            return words;
        }
    }
    return unknown;
}

std::string_view byteWord(const ByteCountWords& words, std::uint64_t count) {
    if (!words.oneEndsWithOne) {
        return count == 1 ? words.one : words.many;
    }
    const bool isTeen = count / 10 % 10 == 1;
    if (isTeen || count % 10 == 0 || count % 10 > 4) {
        return words.many;
    }
    return count % 10 == 1 ? words.one : words.few;
}

} // namespace vantor::platform
