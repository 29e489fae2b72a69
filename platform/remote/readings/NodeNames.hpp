// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/MemInfo.hpp"
#include "platform/linux/figures/MemorySplit.hpp"
#include "platform/remote/readings/Reading.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::platform::remote {

/// The memory figures of macOS and the BSDs under node_exporter's names, in bytes (its sources
/// meminfo_darwin.go, memory_bsd.go, meminfo_openbsd.go, meminfo_netbsd.go).
struct OtherMemory {
    std::optional<std::uint64_t> total; ///< macOS
    std::optional<std::uint64_t> size;  ///< the BSDs
    std::optional<std::uint64_t> free;  ///< untouched
    std::optional<std::uint64_t> active;
    std::optional<std::uint64_t> inactive;
    std::optional<std::uint64_t> wired;
    std::optional<std::uint64_t> cache;      ///< not on NetBSD
    std::optional<std::uint64_t> compressed; ///< macOS
    std::optional<std::uint64_t> internal;   ///< macOS: programs' own pages
    std::optional<std::uint64_t> purgeable;  ///< macOS
};

template<class Record>
struct MemoryName {
    std::string_view name; ///< behind "node_memory_"
    std::optional<std::uint64_t> Record::*figure;
};

/// Linux: the lines of /proc/meminfo with underscores for brackets. Which of them are there depends on the
/// exporter's version and the site's own filter.
inline constexpr std::array<MemoryName<linux::MemInfo>, 19> linuxMemoryNames{{
    {"MemTotal_bytes", &linux::MemInfo::memTotal},
    {"MemFree_bytes", &linux::MemInfo::memFree},
    {"MemAvailable_bytes", &linux::MemInfo::memAvailable},
    {"Active_anon_bytes", &linux::MemInfo::activeAnon},
    {"Inactive_anon_bytes", &linux::MemInfo::inactiveAnon},
    {"Active_file_bytes", &linux::MemInfo::activeFile},
    {"Inactive_file_bytes", &linux::MemInfo::inactiveFile},
    {"Unevictable_bytes", &linux::MemInfo::unevictable},
    {"SwapFree_bytes", &linux::MemInfo::swapFree},
    {"Zswap_bytes", &linux::MemInfo::zswap},
    {"Dirty_bytes", &linux::MemInfo::dirty},
    {"Writeback_bytes", &linux::MemInfo::writeback},
    {"SReclaimable_bytes", &linux::MemInfo::sReclaimable},
    {"SUnreclaim_bytes", &linux::MemInfo::sUnreclaim},
    {"KernelStack_bytes", &linux::MemInfo::kernelStack},
    {"PageTables_bytes", &linux::MemInfo::pageTables},
    {"SecPageTables_bytes", &linux::MemInfo::secPageTables},
    {"Percpu_bytes", &linux::MemInfo::percpu},
    {"Hugetlb_bytes", &linux::MemInfo::hugetlb},
}};

inline constexpr std::array<MemoryName<OtherMemory>, 10> otherMemoryNames{{
    {"total_bytes", &OtherMemory::total},
    {"size_bytes", &OtherMemory::size},
    {"free_bytes", &OtherMemory::free},
    {"active_bytes", &OtherMemory::active},
    {"inactive_bytes", &OtherMemory::inactive},
    {"wired_bytes", &OtherMemory::wired},
    {"cache_bytes", &OtherMemory::cache},
    {"compressed_bytes", &OtherMemory::compressed},
    {"internal_bytes", &OtherMemory::internal},
    {"purgeable_bytes", &OtherMemory::purgeable},
}};

/// The memory of macOS or a BSD in the monitor's terms; absent where a figure that it needs is missing. Pure.
[[nodiscard]] std::optional<linux::MemorySplit> memorySplit(const OtherMemory& memory);

/// To which part of the processor's time a mode belongs, whatever system names it.
[[nodiscard]] ModeKind kindOfMode(std::string_view mode);

} // namespace vantor::platform::remote
