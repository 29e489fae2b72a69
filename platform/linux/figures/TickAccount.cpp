// SPDX-License-Identifier: MIT
#include "platform/linux/figures/TickAccount.hpp"

#include <algorithm>

namespace vantor::platform::linux {

namespace {
/// Ticks are booked late where a processor sleeps or its hypervisor held it back.
constexpr std::chrono::seconds bookedLate{1};
} // namespace

std::uint64_t TickAccount::ticks(std::chrono::nanoseconds time, std::size_t processors) const {
    const double seconds = std::max(0.0, std::chrono::duration<double>(time).count());
    const double all = seconds * static_cast<double>(m_ticksPerSecond) * static_cast<double>(processors);
    return std::max<std::uint64_t>(1, static_cast<std::uint64_t>(std::min(all, 0x1p53)));
}

ProcessorTimes TickAccount::advance(const ProcessorTimes& reading, std::chrono::nanoseconds now,
                                    std::size_t processors) {
    m_mended = false;
    ProcessorTimes passed = reading;
    if (m_last) {
        const std::chrono::nanoseconds elapsed = std::max(now - m_lastTime, std::chrono::nanoseconds(0));
        const std::uint64_t most = ticks(2 * elapsed + bookedLate, processors);
        const auto rise = [&](std::uint64_t ProcessorTimes::*time) -> std::optional<std::uint64_t> {
            const std::uint64_t before = (*m_last).*time;
            const bool sound = reading.*time >= before && reading.*time - before <= most;
            m_mended |= !sound;
            return sound ? std::optional(reading.*time - before) : std::nullopt;
        };
        passed.user = rise(&ProcessorTimes::user).value_or(0);
        passed.system = rise(&ProcessorTimes::system).value_or(0);
        passed.nice = rise(&ProcessorTimes::nice).value_or(0);
        const std::uint64_t busy = passed.user + passed.system + passed.nice;
        const std::uint64_t whole = ticks(elapsed, processors);
        passed.idle = rise(&ProcessorTimes::idle).value_or(whole > busy ? whole - busy : 0);
    }
    m_last = reading;
    m_lastTime = now;
    return passed;
}

} // namespace vantor::platform::linux
