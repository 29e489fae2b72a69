// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/ProcStat.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace vantor::platform::linux {

/// Turns the kernel's processor times, which may fall or jump, into what passed between two readings, which
/// may not. Pure but for the last reading that it keeps. Not for several threads at once.
///
/// An idle time that fell (the kernel corrected its estimate, or a processor went) or that rose by more than
/// the processors could have had (one came back with all that it ever idled) is replaced by what the clock
/// leaves over; any other time that fell or jumped counts as nothing for that one interval.
class TickAccount {
public:
    explicit TickAccount(std::uint64_t ticksPerSecond) : m_ticksPerSecond(ticksPerSecond) {}

    /// What passed since the last reading; for the first one, since boot. `now` is the clock's time of the
    /// reading, `processors` how many were online when last counted.
    [[nodiscard]] ProcessorTimes advance(const ProcessorTimes& reading, std::chrono::nanoseconds now,
                                         std::size_t processors);

    /// True where the last interval was mended: time to count the processors again.
    [[nodiscard]] bool wasMended() const { return m_mended; }

    /// The ticks that all processors together have in a time; at least one.
    [[nodiscard]] std::uint64_t ticks(std::chrono::nanoseconds time, std::size_t processors) const;

private:
    std::uint64_t m_ticksPerSecond;
    std::optional<ProcessorTimes> m_last;
    std::chrono::nanoseconds m_lastTime{};
    bool m_mended = false;
};

/// All ticks of an interval.
[[nodiscard]] inline std::uint64_t sum(const ProcessorTimes& times) {
    return times.user + times.system + times.idle + times.nice;
}

} // namespace vantor::platform::linux
