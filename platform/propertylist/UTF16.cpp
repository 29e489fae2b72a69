// SPDX-License-Identifier: MIT
#include "platform/propertylist/UTF16.hpp"

#include "platform/core/Utf8.hpp"
#include "platform/propertylist/BigEndian.hpp"

#include <cstddef>

namespace vantor::platform {

void appendUTF16(std::string& text, std::string_view bytes) {
    const auto unitAt = [bytes](std::size_t at) {
        return at + 2 <= bytes.size() ? static_cast<char32_t>(bigEndian(bytes.substr(at, 2))) : 0;
    };
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        char32_t c = unitAt(at);
        const char32_t after = unitAt(at + 2);
        if (c >= 0xD800 && c <= 0xDBFF && after >= 0xDC00 && after <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10U) + (after - 0xDC00);
            at += 2;
        }
        appendUtf8(text, c);
    }
}

std::string bytesOfUTF16(std::string_view text) {
    std::string bytes;
    const auto append = [&bytes](char32_t unit) { appendBigEndian(bytes, unit, 2); };
    while (!text.empty()) {
        const char32_t c = takeUtf8(text).value_or(0xFFFD);
        if (c < 0x10000) {
            append(c);
        } else {
            append(0xD800 + ((c - 0x10000) >> 10U));
            append(0xDC00 + (c & 0x3FFU));
        }
    }
    return bytes;
}

} // namespace vantor::platform
