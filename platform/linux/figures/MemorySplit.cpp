// SPDX-License-Identifier: MIT
#include "platform/linux/figures/MemorySplit.hpp"

#include <algorithm>
#include <limits>

namespace vantor::platform::linux {

namespace {

/// Sums of lines that a broken kernel text may hold: they stop at the largest number.
std::uint64_t add(std::uint64_t a, std::uint64_t b) {
    return a > std::numeric_limits<std::uint64_t>::max() - b ? std::numeric_limits<std::uint64_t>::max()
                                                             : a + b;
}

std::uint64_t less(std::uint64_t a, std::uint64_t b) {
    return a > b ? a - b : 0;
}

std::uint64_t pageCache(const MemInfo& info) {
    return add(info.activeFile.value_or(0), info.inactiveFile.value_or(0));
}

/// What is available by the kernel's own estimate (Linux commit 34e431b0ae39): free memory, and the page
/// cache and the reclaimable slab but for half of each or the low watermark.
std::optional<std::uint64_t> estimatedAvailable(const MemInfo& info, std::uint64_t lowWatermark) {
    if (!info.memFree) {
        return std::nullopt;
    }
    const std::uint64_t cache = pageCache(info);
    const std::uint64_t slab = info.sReclaimable.value_or(0);
    return add(add(less(*info.memFree, lowWatermark), cache - std::min(cache / 2, lowWatermark)),
               slab - std::min(slab / 2, lowWatermark));
}

/// As `free` has it: in some containers the host's figure shines through a smaller total, and then only the
/// free pages are known to be the container's own.
std::optional<std::uint64_t> available(const MemInfo& info, std::uint64_t lowWatermark) {
    std::optional<std::uint64_t> bytes = info.memAvailable;
    if (!bytes) {
        bytes = estimatedAvailable(info, lowWatermark);
    }
    return bytes && *bytes > *info.memTotal ? info.memFree : bytes;
}

/// What the cache of ZFS could give back. One that is larger than what is in use belongs to another machine:
/// in a container /proc/meminfo may be the container's while this file is the host's.
std::uint64_t releasable(const ArcStats& arc, std::uint64_t inUse) {
    return arc.size <= inUse ? less(arc.size, arc.minimum) : 0;
}

} // namespace

std::optional<MemorySplit> memorySplit(const MemInfo& info, const MemoryBeside& beside) {
    if (info.memTotal.value_or(0) == 0) {
        return std::nullopt;
    }
    const std::optional<std::uint64_t> free = available(info, beside.lowWatermark);
    if (!free) {
        return std::nullopt;
    }
    const auto within = [](std::uint64_t bytes, std::uint64_t most) { return std::min(bytes, most); };
    MemorySplit figures;
    figures.total = *info.memTotal;
    figures.free = within(*free, figures.total);
    const std::uint64_t cached = beside.arc ? releasable(*beside.arc, figures.total - figures.free) : 0;
    figures.free += cached;
    const std::uint64_t held = figures.total - figures.free;
    const std::uint64_t notTouched = info.inactiveAnon.value_or(0);
    figures.inactive = within(within(notTouched, info.swapFree.value_or(0)), held);
    figures.active = within(add(info.activeAnon.value_or(0), notTouched - figures.inactive), figures.total);
    std::uint64_t wired = 0;
    for (const auto& part : {info.unevictable, info.sUnreclaim, info.kernelStack, info.pageTables,
                             info.secPageTables, info.percpu, info.hugetlb}) {
        wired = add(wired, part.value_or(0));
    }
    figures.wired = within(wired, figures.total);
    const std::uint64_t clean =
        less(pageCache(info), add(info.dirty.value_or(0), info.writeback.value_or(0)));
    figures.purgeable = within(add(add(clean, info.sReclaimable.value_or(0)), cached),
                               less(figures.free, info.memFree.value_or(figures.free)));
    figures.compressed = within(add(info.zswap.value_or(0), beside.zramUsed), figures.total);
    return figures;
}

} // namespace vantor::platform::linux
