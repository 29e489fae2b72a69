// SPDX-License-Identifier: MIT
#include "platform/foundation/NSByteCountFormatter.hpp"

#include "platform/core/ScaledCount.hpp"
#include "platform/foundation/ByteCountWords.hpp"
#include "platform/foundation/CountText.hpp"
#include "platform/viewer/Viewer.hpp"

#include <cstddef>

namespace vantor::platform {

std::string NSByteCountFormatter::stringFromByteCount(std::int64_t byteCount,
                                                      NSByteCountFormatterCountStyle countStyle) {
    return stringFromByteCount(byteCount, countStyle, currentViewer().localeSigns());
}

std::string NSByteCountFormatter::stringFromByteCount(std::int64_t byteCount,
                                                      NSByteCountFormatterCountStyle countStyle,
                                                      const LocaleSigns& signs) {
    const ByteCountWords& words = byteCountWords(signs.language);
    std::string text;
    if (byteCount == 0) {
        text = words.zero;
        if (text.empty()) {
            text.append(signs.digits[0]).append(" ").append(words.units[0]);
        }
        return text;
    }
    const bool isNegative = byteCount < 0;
    // Negated as unsigned, since the smallest count has no positive counterpart.
    const std::uint64_t magnitude =
        isNegative ? ~static_cast<std::uint64_t>(byteCount) + 1 : static_cast<std::uint64_t>(byteCount);
    const ScaledCount scaled =
        scaledCount(magnitude, countStyle == NSByteCountFormatterCountStyle::memory ? 1024 : 1000);
    if (isNegative) {
        text += signs.minus;
    }
    appendNumber(text, scaled, signs);
    if (scaled.unit > 0 || words.bytesFollowBlank) {
        text += ' ';
    }
    text += scaled.unit > 0 ? words.units[scaled.unit - 1] : byteWord(words, scaled.digits);
    return text;
}

} // namespace vantor::platform
