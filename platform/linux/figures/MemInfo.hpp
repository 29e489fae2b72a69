// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::platform::linux {

/// The lines of /proc/meminfo (proc_meminfo(5)) that the memory figures are made of, in bytes (the kernel
/// writes KiB). A line that is missing, cut short or no number is absent.
struct MemInfo {
    std::optional<std::uint64_t> memTotal;
    std::optional<std::uint64_t> memFree;
    std::optional<std::uint64_t> memAvailable; ///< since Linux 3.14
    std::optional<std::uint64_t> activeAnon;
    std::optional<std::uint64_t> inactiveAnon;
    std::optional<std::uint64_t> activeFile;
    std::optional<std::uint64_t> inactiveFile;
    std::optional<std::uint64_t> unevictable;
    std::optional<std::uint64_t> swapFree;
    std::optional<std::uint64_t> zswap; ///< RAM that compressed pages take, since Linux 5.19
    std::optional<std::uint64_t> dirty;
    std::optional<std::uint64_t> writeback;
    std::optional<std::uint64_t> sReclaimable;
    std::optional<std::uint64_t> sUnreclaim;
    std::optional<std::uint64_t> kernelStack;
    std::optional<std::uint64_t> pageTables;
    std::optional<std::uint64_t> secPageTables; ///< of virtual machines and I/O devices, since Linux 6.0
    std::optional<std::uint64_t> percpu;
    std::optional<std::uint64_t> hugetlb; ///< the pool of huge pages, used or not, since Linux 4.15
    bool operator==(const MemInfo&) const = default;
};

/// Parses the text of /proc/meminfo. Where a line occurs twice the first holds.
[[nodiscard]] MemInfo parseMemInfo(std::string_view text);

} // namespace vantor::platform::linux
