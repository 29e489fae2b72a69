// SPDX-License-Identifier: MIT
#include "platform/foundation/NSByteCountFormatter.hpp"

#include "platform/foundation/ByteCountWords.hpp"
#include "platform/machine/Machine.hpp"

#include <cstddef>

namespace vantor::platform {

namespace {

/// A count in its unit: 12.35 GB is {1235, 2, 3}.
struct Scaled {
    std::uint64_t digits = 0; // the value without its decimal sign
    unsigned fraction = 0;    // how many of the digits are behind it
    std::size_t unit = 0;     // 0 bytes, 1 KB, …
};

constexpr std::size_t largestUnit = 6;

constexpr unsigned fractionOf(std::size_t unit) {
    return unit <= 1 ? 0 : unit == 2 ? 1 : 2;
}

/// `magnitude` / `divisor` with so many digits behind the decimal sign, half to even. Nothing overflows: the
/// divisor is at most 2^60, so ten times a remainder fits.
std::uint64_t roundedQuotient(std::uint64_t magnitude, std::uint64_t divisor, unsigned fraction) {
    std::uint64_t digits = magnitude / divisor;
    std::uint64_t rest = magnitude % divisor;
    for (unsigned i = 0; i < fraction; ++i) {
        rest *= 10;
        digits = digits * 10 + rest / divisor;
        rest %= divisor;
    }
    const std::uint64_t twice = rest * 2;
    return digits + (twice > divisor || (twice == divisor && digits % 2 == 1) ? 1 : 0);
}

Scaled scaledCount(std::uint64_t magnitude, std::uint64_t base) {
    Scaled scaled{magnitude, 0, 0};
    std::uint64_t limit = base; // the first figure that belongs to the next unit
    for (std::uint64_t divisor = base; scaled.digits >= limit && scaled.unit < largestUnit; divisor *= base) {
        ++scaled.unit;
        scaled.fraction = fractionOf(scaled.unit);
        scaled.digits = roundedQuotient(magnitude, divisor, scaled.fraction);
        limit = base;
        for (unsigned i = 0; i < scaled.fraction; ++i) {
            limit *= 10;
        }
    }
    while (scaled.fraction > 0 && scaled.digits % 10 == 0) {
        scaled.digits /= 10;
        --scaled.fraction;
    }
    return scaled;
}

/// Digits from the highest on; at most four stand before the decimal sign, so at most one group sign.
void appendNumber(std::string& text, const Scaled& scaled, const LocaleSigns& signs) {
    std::array<unsigned, 20> digits{};
    std::size_t count = 0;
    for (std::uint64_t left = scaled.digits; left > 0 || count <= scaled.fraction; left /= 10) {
        digits[count++] = static_cast<unsigned>(left % 10);
    }
    while (count > 0) {
        --count;
        text += signs.digits[digits[count]];
        if (count == scaled.fraction && count > 0) {
            text += signs.decimal;
        } else if (count == scaled.fraction + 3) {
            text += signs.grouping;
        }
    }
}

} // namespace

std::string NSByteCountFormatter::stringFromByteCount(std::int64_t byteCount,
                                                      NSByteCountFormatterCountStyle countStyle) {
    return stringFromByteCount(byteCount, countStyle, currentMachine().localeSigns());
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
    const Scaled scaled =
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
