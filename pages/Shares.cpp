// SPDX-License-Identifier: MIT
#include "pages/Shares.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace vantor {

namespace {

constexpr double tenthsInOne = 10;

} // namespace

double scaleWithin(double whole, double sum) {
    return sum > whole ? std::max(whole, 0.0) / sum : 1;
}

std::vector<double> tenthsOf(std::vector<double> parts, double whole) {
    if (!std::isfinite(whole)) {
        return parts;
    }
    std::vector<double> lost(parts.size());
    double missing = std::round(whole * tenthsInOne);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const double tenths = parts[i] * tenthsInOne;
        parts[i] = std::floor(tenths);
        lost[i] = tenths - parts[i];
        missing -= parts[i];
    }
    std::vector<std::size_t> order(parts.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::ranges::greater(), [&lost](std::size_t i) { return lost[i]; });
    for (const std::size_t i : order) {
        parts[i] += missing >= 1 ? 1 : 0;
        missing -= 1;
    }
    std::ranges::transform(parts, parts.begin(), [](double tenths) { return tenths / tenthsInOne; });
    return parts;
}

} // namespace vantor
