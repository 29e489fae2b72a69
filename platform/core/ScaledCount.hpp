// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace vantor::platform {

/// A count of bytes in the largest unit that shows at least 1: 12.35 GB is {1235, 2, 3}.
struct ScaledCount {
    std::uint64_t digits = 0; ///< the value without its decimal sign and without zeros at a fraction's end
    unsigned fraction = 0;    ///< how many of them follow that sign: none up to KB, one for MB, else two
    std::size_t unit = 0;     ///< 0 bytes, 1 KB, … 6 EB
};

/// `base` is 1000 or 1024. Rounds half to even, and chooses the unit after rounding: never "1,024 KB". Pure.
[[nodiscard]] ScaledCount scaledCount(std::uint64_t bytes, std::uint64_t base);

} // namespace vantor::platform
