// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/ProcStat.hpp"
#include "platform/machine/HostStatistics.hpp"

#include <chrono>
#include <cstdint>

namespace vantor::platform::linux {

/// The platform's four 32-bit tick counters, made from 64-bit intervals so that they never fall, never wrap
/// and keep the proportions of each interval. Not for several threads at once.
///
/// The kernel's own ticks would not do: all processors together make 100 × processors of them a second, which
/// wraps 32 bits after 124 days on 4 processors and after 11 hours on 1,024. But whoever reads the counters
/// only ever divides an interval's differences by their sum, so what has to last is the range of the
/// counters, and it may be spent interval by interval: each answer adds the interval's ticks in lowest terms
/// where they are few enough, else the four whole numbers whose proportions come closest to the interval's
/// among those with a sum that may be spent on it. Three quarters of the range are laid out evenly over six
/// years (34 units for two seconds), the rest goes to whoever watches now, a thirtieth a day (828 units for
/// two seconds at first). What an idle machine leaves unspent stays in the pot. After five years the plan
/// turns into an exponential one with a time constant of a year, so that the range never quite runs out.
///
/// How far the shares of a busy 2-second interval are off, in percentage points, where the machine never left
/// anything unspent (TickScaleTest measures this on 2,000 random loads and holds it to these bounds):
///
///                      4 processors (800 ticks)         1,024 processors (204,800 ticks)
///     after a day      exact                            0.02 in the mean, 0.06 at most
///     after a year     0.8 in the mean, 2 at most       0.8 in the mean, 2 at most
///     after five       0.8 in the mean, 2 at most       0.8 in the mean, 2 at most
class TickScale {
public:
    TickScale() = default;
    /// The scale as it stands `age` seconds after its first answer, with these counters.
    TickScale(double age, const host_cpu_load_info& counters)
        : m_counters(counters), m_age(age), m_started(true) {}

    /// The highest that a counter may have become at an age, by the plan.
    [[nodiscard]] static std::uint32_t highestPlanned(double age);

    /// Adds an interval's ticks and returns the counters as they then stand. At least one counter moves if
    /// any tick passed.
    host_cpu_load_info add(const ProcessorTimes& passed, std::chrono::nanoseconds elapsed);

    /// How many units may be spent on an interval of this length now.
    [[nodiscard]] std::uint32_t allowance(std::chrono::nanoseconds elapsed) const;

private:
    [[nodiscard]] double remaining() const;

    host_cpu_load_info m_counters{};
    double m_age = 0; ///< seconds since the first answer
    bool m_started = false;
};

} // namespace vantor::platform::linux
