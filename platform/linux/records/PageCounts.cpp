// SPDX-License-Identifier: MIT
#include "platform/linux/records/PageCounts.hpp"

#include <algorithm>
#include <limits>

namespace vantor::platform::linux {

namespace {

constexpr std::uint64_t mostPages = std::numeric_limits<std::uint32_t>::max();

} // namespace

std::uint64_t pageSizeFor(std::uint64_t total, std::uint64_t smallest) {
    std::uint64_t size = smallest;
    while (total / size > mostPages) {
        size *= 2;
    }
    return size;
}

vm_statistics64 pageCounts(const MemorySplit& split, std::uint64_t pageSize) {
    const auto count = [pageSize](std::uint64_t bytes) {
        return static_cast<std::uint32_t>(std::min(bytes / pageSize, mostPages));
    };
    vm_statistics64 record{};
    record.free_count = count(split.free);
    record.active_count = count(split.active);
    record.inactive_count = count(split.inactive);
    record.wire_count = count(split.wired);
    record.purgeable_count = count(split.purgeable);
    record.compressor_page_count = count(split.compressed);
    return record;
}

} // namespace vantor::platform::linux
