// SPDX-License-Identifier: MIT
#pragma once

#include "platform/viewer/LocaleSigns.hpp"

#include <cstdint>
#include <string>

namespace vantor::platform {

/// What a kilobyte is: 1,024 bytes for memory, 1,000 for the others.
enum class NSByteCountFormatterCountStyle : long { file = 0, memory = 1, decimal = 2 };

/// Byte counts for people: "Zero KB", "1 byte", "1,023 bytes", "1.5 MB", "-12.35 GB".
class NSByteCountFormatter {
public:
    /// In the signs and words of the current viewer. Any thread.
    [[nodiscard]] static std::string stringFromByteCount(std::int64_t byteCount,
                                                         NSByteCountFormatterCountStyle countStyle);

    /// The same for given signs. Bytes and KB show no fraction, MB one digit, larger units two, without
    /// trailing zeros; ties are rounded to even, exactly; the unit is chosen after rounding, so nothing reads
    /// "1,000 KB".
    [[nodiscard]] static std::string stringFromByteCount(std::int64_t byteCount,
                                                         NSByteCountFormatterCountStyle countStyle,
                                                         const LocaleSigns& signs);
};

} // namespace vantor::platform
