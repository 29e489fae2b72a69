// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/ArcReader.hpp"
#include "platform/linux/FailureBoard.hpp"
#include "platform/linux/MachineOptions.hpp"
#include "platform/linux/ZramReader.hpp"
#include "platform/linux/figures/MemorySplit.hpp"
#include "platform/linux/kernel/KernelFile.hpp"

#include <mutex>
#include <optional>

namespace vantor::platform::linux {

/// Reads the machine's memory figures: /proc/meminfo, the compressed memory disks under /sys and the cache of
/// ZFS. Where that fails the answer is what sysinfo(2) knows, and where that fails too, the last good
/// figures; either way the failure is flagged until a read succeeds. Any thread.
class MemoryReader {
public:
    MemoryReader(const MachineOptions& options, FailureBoard& failures);

    /// The figures now; absent only where the machine never answered at all.
    [[nodiscard]] std::optional<MemorySplit> read();

    /// Installed memory in bytes as of the last read, so that what is subtracted from it fits to it (memory
    /// can be plugged in, and a balloon can take it away). Reads where nothing was read yet; 0 where that
    /// fails.
    [[nodiscard]] std::uint64_t total();

private:
    std::optional<MemorySplit> readFiles();
    std::optional<MemorySplit> readLocked();
    std::uint64_t lowWatermark();

    const MachineOptions& m_options;
    FailureBoard& m_failures;
    std::mutex m_mutex;
    KernelFile m_memInfo;
    KernelFile m_minFree;
    ZramReader m_zram;
    ArcReader m_arc;
    std::optional<MemorySplit> m_last;
};

} // namespace vantor::platform::linux
