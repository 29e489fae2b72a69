// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/ArcStats.hpp"
#include "platform/linux/figures/MemInfo.hpp"

#include <cstdint>
#include <optional>

namespace vantor::platform::linux {

/// A machine's memory in bytes, in the monitor's own terms.
struct MemorySplit {
    std::uint64_t total = 0;
    std::uint64_t free = 0;       ///< what programs can have at once: what `free` calls available
    std::uint64_t active = 0;     ///< programs' pages in use
    std::uint64_t inactive = 0;   ///< programs' pages that could be moved to swap
    std::uint64_t wired = 0;      ///< what the kernel cannot give back
    std::uint64_t purgeable = 0;  ///< the part of `free` that holds cached data
    std::uint64_t compressed = 0; ///< RAM that holds compressed pages
    bool operator==(const MemorySplit&) const = default;
};

/// What /proc/meminfo does not tell, in bytes.
struct MemoryBeside {
    std::uint64_t zramUsed = 0; ///< the RAM that compressed memory disks take
    std::uint64_t lowWatermark =
        0; ///< what the kernel keeps back for itself; only where MemAvailable is missing
    std::optional<ArcStats> arc = {};
};

/// Makes the figures of a parsed /proc/meminfo and what stands elsewhere.
///
/// - A kernel before 3.14 does not say what is available: the estimate is then the one that newer kernels
///   make.
/// - The kernel leaves the cache of ZFS out of what is available; what it could give back counts as free.
/// - New pages of programs start on the kernel's inactive list and stay there until memory runs short (since
///   Linux 5.9), so the list alone says nothing: inactive is what of it could be moved to swap, and the other
///   pages of programs are active.
///
/// Every figure is at most the total. Absent where the total, or anything to tell the free part by, is
/// missing. Pure.
[[nodiscard]] std::optional<MemorySplit> memorySplit(const MemInfo& info, const MemoryBeside& beside);

} // namespace vantor::platform::linux
