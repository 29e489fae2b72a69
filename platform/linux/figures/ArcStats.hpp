// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::platform::linux {

/// The cache of ZFS, in bytes, as /proc/spl/kstat/zfs/arcstats has it. The kernel counts it as used memory.
struct ArcStats {
    std::uint64_t size = 0;    ///< what it takes now
    std::uint64_t minimum = 0; ///< what it keeps whatever happens
    bool operator==(const ArcStats&) const = default;
};

/// Parses the lines "name type data"; absent where the size or the minimum (`c_min`) is missing, cut short or
/// no number.
[[nodiscard]] std::optional<ArcStats> parseArcStats(std::string_view text);

} // namespace vantor::platform::linux
