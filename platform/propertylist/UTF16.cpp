// SPDX-License-Identifier: MIT
#include "platform/propertylist/UTF16.hpp"

#include "platform/propertylist/BigEndian.hpp"

#include <cstddef>

namespace vantor::platform {

namespace {

void appendUTF8(std::string& text, char32_t c) {
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

} // namespace

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
        } else if (c >= 0xD800 && c <= 0xDFFF) {
            c = 0xFFFD;
        }
        appendUTF8(text, c);
    }
}

} // namespace vantor::platform
