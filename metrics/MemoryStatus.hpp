// SPDX-License-Identifier: MIT
#pragma once

#include "metrics/MemoryFigures.hpp"
#include "platform/machine/HostStatistics.hpp"

#include <optional>

namespace vantor {

/// The kernel's page counters, asked for once; absent when the call fails. Any thread.
[[nodiscard]] std::optional<platform::vm_statistics64> getVMStatistics64();

/// Turns page counters into byte figures.
class MemoryStatus {
public:
    /// Ten figures, all in bytes: "total", "used", "free", "active", "inactive", "wire", "purgeable",
    /// "compressor", "free+inactive" and "pressure" (wired and compressed). With the preference
    /// "isInactiveRAMHide" inactive pages do not count as used; no other figure changes. Overflow, a page
    /// size of 4 GiB or more and a memory of 2^63 bytes or more are fatal. Any thread.
    [[nodiscard]] static MemoryFigures getMemoryStatus(const platform::vm_statistics64& record);
};

} // namespace vantor
