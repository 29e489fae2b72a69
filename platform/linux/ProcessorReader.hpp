// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/FailureBoard.hpp"
#include "platform/linux/MachineOptions.hpp"
#include "platform/linux/figures/TickAccount.hpp"
#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/records/TickScale.hpp"
#include "platform/machine/HostStatistics.hpp"

#include <mutex>
#include <optional>

namespace vantor::platform::linux {

/// Reads the processor's ticks from /proc/stat. Between two answers some time always passes: where the
/// kernel's ticks have not moved since the last one, the call waits for them, at most 20 ms. A file that
/// cannot be read, or whose ticks stand still for a second, is flagged, and the time until it moves counts as
/// idle. Any thread; a second caller waits for the first.
class ProcessorReader {
public:
    ProcessorReader(const MachineOptions& options, FailureBoard& failures);

    /// The counters now. The first answer stands for the time since boot.
    [[nodiscard]] host_cpu_load_info read();

private:
    std::optional<ProcessorTimes> readTimes();
    std::optional<ProcessorTimes> readMovedTimes();
    void judge(const ProcessorTimes& times, std::chrono::nanoseconds now);
    ProcessorTimes passedSince(const ProcessorTimes& times, std::chrono::nanoseconds now);
    void countOnline();

    const MachineOptions& m_options;
    FailureBoard& m_failures;
    std::mutex m_mutex;
    KernelFile m_stat;
    std::size_t m_processors = 0;
    TickAccount m_account;
    TickScale m_scale;
    std::optional<ProcessorTimes> m_lastTimes;
    std::optional<std::chrono::nanoseconds> m_lastMoved;
    std::optional<std::chrono::nanoseconds> m_lastAnswer;
};

} // namespace vantor::platform::linux
