// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vantor::platform::linux {

/// The processors' time since boot in clock ticks (100 a second), summed over all processors: the first line
/// of /proc/stat (proc_stat(5)), grouped as a person asks for it. The kernel lets any of them but `user` and
/// `nice` fall now and then: idle and iowait are estimates, and a processor that goes takes its idle time
/// along.
struct ProcessorTimes {
    std::uint64_t user = 0;   ///< guests' time is part of it
    std::uint64_t system = 0; ///< with interrupts and the time that a hypervisor took
    std::uint64_t idle = 0;   ///< with waiting for disks
    std::uint64_t nice = 0;
    bool operator==(const ProcessorTimes&) const = default;
};

/// Parses the text of /proc/stat; only its first line is looked at. Absent where that is cut short or any of
/// its numbers cannot be read; the columns after idle are optional, as on old kernels.
[[nodiscard]] std::optional<ProcessorTimes> parseProcStat(std::string_view text);

/// How many processors /proc/stat lists ("cpu0", "cpu1", …): those that are online.
[[nodiscard]] std::size_t countProcessors(std::string_view text);

} // namespace vantor::platform::linux
