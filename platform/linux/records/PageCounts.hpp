// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/MemorySplit.hpp"
#include "platform/machine/HostStatistics.hpp"

#include <cstdint>

namespace vantor::platform::linux {

/// A page size, doubled until `total` bytes are no more pages than a count of the platform's record can hold:
/// 4 KiB do up to 16 TiB, then it is 8 KiB.
[[nodiscard]] std::uint64_t pageSizeFor(std::uint64_t total, std::uint64_t smallest);

/// The memory as the platform's record of page counts. A count never exceeds its word.
[[nodiscard]] vm_statistics64 pageCounts(const MemorySplit& split, std::uint64_t pageSize);

} // namespace vantor::platform::linux
