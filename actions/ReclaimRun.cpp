// SPDX-License-Identifier: MIT
#include "actions/ReclaimRun.hpp"

#include <algorithm>

namespace vantor {

using platform::ReclaimableGroup;
using platform::ReclaimAnswer;

namespace reclaim {

bool isAtWork(const ReclaimableGroup& before, const ReclaimableGroup& now, Pace::Moment::duration since) {
    const auto time = std::chrono::duration_cast<std::chrono::microseconds>(
        std::max<Pace::Moment::duration>(since, watched));
    return now.processorTime > before.processorTime + static_cast<std::uint64_t>(time.count()) / 100;
}

std::uint64_t roomIn(const platform::SwapSpace& swap) {
    const std::uint64_t kept = swap.total / 5 * 2;
    return swap.free > kept ? swap.free - kept : 0;
}

} // namespace reclaim

ReclaimRun::ReclaimRun(const Pace& pace, Pace::Moment looked, std::uint64_t most)
    : m_pace(pace),
      m_looked(looked),
      m_most(most),
      m_before(platform::currentWorkloadControl().memoryLevel().value_or(platform::MemoryLevel())),
      m_swapBefore(platform::currentWorkload().swapSpace().value_or(platform::SwapSpace())),
      m_pressure(platform::currentWorkload().memoryPressure()),
      m_pressureRead(pace.now()),
      m_trial{.available = m_before.available} {}

bool ReclaimRun::take(const ReclaimableGroup& group, const FreeUpMemory::KeepGoing& keepGoing,
                      const FreeUpMemory::Progress& progress) {
    platform::WorkloadControl& control = platform::currentWorkloadControl();
    ReclaimAnswer answer = ReclaimAnswer::done;
    for (std::uint64_t left = group.inactive;
         left > 0 && m_asked < m_most && answer == ReclaimAnswer::done;) {
        if (!keepGoing()) {
            m_end = FreeUpEnd::stopped;
            return false;
        }
        const std::optional<ReclaimableGroup> now = control.reclaimableGroup(group.path);
        if (!now || now->inactive == 0 || reclaim::isAtWork(group, *now, m_pace.now() - m_looked)) {
            return true; // its pages are wanted again
        }
        const std::uint64_t asked = std::min({left, reclaim::step, now->inactive, m_most - m_asked});
        answer = control.reclaim(group.path, asked);
        if (answer == ReclaimAnswer::refused) {
            return true;
        }
        left -= asked;
        m_asked += asked;
        m_taken += answer == ReclaimAnswer::done ? asked : 0;
        progress(m_asked);
        m_pace.wait(reclaim::pause);
        m_end = harm();
        if (m_end) {
            return false;
        }
    }
    return m_asked < m_most;
}

/// A reason to end the run before it does more harm than good.
std::optional<FreeUpEnd> ReclaimRun::harm() {
    const std::optional<platform::SwapSpace> swap = platform::currentWorkload().swapSpace();
    if (!swap || reclaim::roomIn(*swap) == 0) {
        return FreeUpEnd::swapNearlyFull;
    }
    if (hasPressure()) {
        return FreeUpEnd::underPressure;
    }
    return m_isGain ? std::nullopt : futility();
}

/// Whether less than a quarter of what was taken became available. The first to be freed may stay out of
/// sight, in the lists of free pages that each processor keeps for itself, so that two trials have to fail.
std::optional<FreeUpEnd> ReclaimRun::futility() {
    constexpr std::uint64_t trial = 64 * reclaim::mebibyte;
    constexpr int most = 2;
    const std::uint64_t taken = m_taken - m_trial.taken;
    if (taken < trial) {
        return std::nullopt;
    }
    const std::uint64_t available =
        platform::currentWorkloadControl().memoryLevel().value_or(m_before).available;
    m_isGain = available >= m_trial.available + taken / 4;
    if (m_isGain || ++m_trials < most) {
        m_trial = {m_taken, available, moved()};
        return std::nullopt;
    }
    return moved() >= m_trial.moved + taken / 2 ? FreeUpEnd::compressesBadly : FreeUpEnd::tookCache;
}

/// Whether some program stood still for more than a tenth of the time, of a second at least: our own work
/// counts as waiting, too, and a single step is too short to tell.
bool ReclaimRun::hasPressure() {
    constexpr std::chrono::seconds span{1};
    const std::optional<platform::Pressure> pressure = platform::currentWorkload().memoryPressure();
    if (!pressure || !m_pressure) {
        return false;
    }
    const Pace::Moment now = m_pace.now();
    const auto time = std::max<Pace::Moment::duration>(now - m_pressureRead, span);
    const std::uint64_t allowed =
        static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(time).count()) / 10;
    const bool isShort = pressure->microseconds > m_pressure->microseconds + allowed;
    if (now - m_pressureRead >= span) {
        m_pressure = pressure;
        m_pressureRead = now;
    }
    return isShort;
}

std::uint64_t ReclaimRun::moved() const {
    const std::optional<platform::SwapSpace> swap = platform::currentWorkload().swapSpace();
    return swap && swap->free < m_swapBefore.free ? m_swapBefore.free - swap->free : 0;
}

MemoryFreed ReclaimRun::result() const {
    const std::optional<platform::MemoryLevel> level = platform::currentWorkloadControl().memoryLevel();
    return {.availableBefore = m_before.available,
            .availableAfter = level.value_or(m_before).available,
            .moved = moved(),
            .end = m_end.value_or(m_asked > 0 ? FreeUpEnd::finished : FreeUpEnd::refused)};
}

} // namespace vantor
