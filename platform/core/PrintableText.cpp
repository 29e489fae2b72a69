// SPDX-License-Identifier: MIT
#include "platform/core/PrintableText.hpp"

#include "platform/core/Utf8.hpp"

#include <optional>

namespace vantor::platform {

namespace {

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
        std::string_view rest = text;
        const std::optional<char32_t> next = takeUtf8(rest);
        const bool keep = next && isHarmless(*next);
        const std::string_view piece = keep ? text.substr(0, text.size() - rest.size()) : replacement;
        if (result.size() + piece.size() > longest) {
            return result.append(ellipsis);
        }
        result.append(piece);
        text = rest;
    }
    return result;
}

} // namespace vantor::platform
