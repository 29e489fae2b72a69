// SPDX-License-Identifier: MIT
#include "controller/ByteText.hpp"

#include "platform/foundation/NSByteCountFormatter.hpp"

#include <string_view>

namespace vantor {

namespace {

using platform::NSByteCountFormatter;
using platform::NSByteCountFormatterCountStyle;

std::string replaced(std::string text, std::string_view word, std::string_view with) {
    std::size_t at = text.find(word);
    if (at == std::string::npos) {
        return text;
    }
    std::string result;
    std::size_t from = 0;
    for (; at != std::string::npos; at = text.find(word, from)) {
        result.append(text, from, at - from).append(with);
        from = at + word.size();
    }
    return result.append(text, from);
}

std::string digitForZero(std::int64_t bytes, NSByteCountFormatterCountStyle style) {
    return replaced(NSByteCountFormatter::stringFromByteCount(bytes, style), "Zero", "0");
}

} // namespace

std::string memoryText(std::int64_t bytes) {
    return NSByteCountFormatter::stringFromByteCount(bytes, NSByteCountFormatterCountStyle::memory);
}

std::string storageText(std::int64_t bytes) {
    return digitForZero(bytes, NSByteCountFormatterCountStyle::file);
}

std::string trafficText(std::int64_t bytes) {
    return replaced(digitForZero(bytes, NSByteCountFormatterCountStyle::decimal), "byte", "B");
}

} // namespace vantor
