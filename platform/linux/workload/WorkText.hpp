// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/WorkloadControl.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The kernel's texts about what runs. All pure.
namespace vantor::platform::linux {

/// The line "some" of a file of /proc/pressure (Documentation/accounting/psi.rst).
[[nodiscard]] std::optional<Pressure> parsePressure(std::string_view text);

/// The lines SwapTotal and SwapFree of /proc/meminfo; absent where either is missing.
[[nodiscard]] std::optional<SwapSpace> parseSwapSpace(std::string_view memInfo);

/// The lines MemTotal and MemAvailable of /proc/meminfo; absent where either is missing.
[[nodiscard]] std::optional<MemoryLevel> parseMemoryLevel(std::string_view memInfo);

/// The number after a name in lines "NAME NUMBER", such as memory.stat and cpu.stat of a control group.
[[nodiscard]] std::optional<std::uint64_t> statNumber(std::string_view text, std::string_view name);

/// The numbers of cgroup.procs, one a line.
[[nodiscard]] std::vector<int> parseProcessNumbers(std::string_view text);

/// What is used of /proc/PID/stat and /proc/PID/status (proc(5)).
struct ProcessStat {
    std::string name;
    int parent = 0;
    int session = 0; ///< the number of its session's leader; 0 where that is outside of this container
    bool hasTerminal = false; ///< its session's; /proc/PID/stat alone tells
    bool isKernelThread = false;
    std::uint64_t ticks = 0; ///< of processor time, by itself and in the kernel
    std::uint64_t start = 0;
    std::uint64_t faults = 0;   ///< of pages, since it started
    std::uint64_t resident = 0; ///< pages in RAM; the kernel counts them a little late
};
[[nodiscard]] std::optional<ProcessStat> parseProcessStat(std::string_view text);

/// Bytes.
struct ProcessMemory {
    std::uint64_t memory = 0; ///< RssAnon and RssShmem
    std::uint64_t swap = 0;   ///< VmSwap
};
/// A kernel thread has none of these lines, and no memory.
[[nodiscard]] ProcessMemory parseProcessMemory(std::string_view status);

/// What the text of /proc/PID/status tells of a process's place and memory: of `stat` the name, the parent,
/// the session and whether it is the kernel's.
struct ProcessStatus {
    ProcessStat stat;
    ProcessMemory memory;
};
/// Absent without the line NSsid, as in kernels that were built without namespaces of processes.
[[nodiscard]] std::optional<ProcessStatus> parseProcessStatus(std::string_view status);

/// The lines Pss_Anon, Pss_Shmem and SwapPss of /proc/PID/smaps_rollup; absent without the first, as before
/// Linux 5.4.
[[nodiscard]] std::optional<ProcessMemory> parseProportionalMemory(std::string_view rollup);

/// The lines cpu0, cpu1, … of /proc/stat. Guests' time is in the user's already, as the kernel counts it.
[[nodiscard]] std::vector<ProcessorTicks> parseProcessorTicks(std::string_view stat);

/// The first three numbers of /proc/loadavg.
[[nodiscard]] std::optional<std::array<double, 3>> parseLoadAverages(std::string_view text);

} // namespace vantor::platform::linux
