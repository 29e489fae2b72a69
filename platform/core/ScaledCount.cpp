// SPDX-License-Identifier: MIT
#include "platform/core/ScaledCount.hpp"

namespace vantor::platform {

namespace {

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

} // namespace

ScaledCount scaledCount(std::uint64_t bytes, std::uint64_t base) {
    ScaledCount scaled{bytes, 0, 0};
    std::uint64_t limit = base; // the first figure that belongs to the next unit
    for (std::uint64_t divisor = base; scaled.digits >= limit && scaled.unit < largestUnit; divisor *= base) {
        ++scaled.unit;
        scaled.fraction = fractionOf(scaled.unit);
        scaled.digits = roundedQuotient(bytes, divisor, scaled.fraction);
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

} // namespace vantor::platform
