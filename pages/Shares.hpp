// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

/// Shares in percent that are parts of one whole. Any thread.
namespace vantor {

/// What shares of that sum are to be multiplied by, so that together they are no more than the whole: 1 where
/// they are not.
[[nodiscard]] double scaleWithin(double whole, double sum);

/// The parts as they are shown, in tenths: each is rounded up or down so that they add up to the whole, which
/// is rounded to the nearest. What has lost most by rounding down is rounded up. The parts must add up to the
/// whole and not be negative. Without a number for the whole they are left as they are.
[[nodiscard]] std::vector<double> tenthsOf(std::vector<double> parts, double whole);

} // namespace vantor
