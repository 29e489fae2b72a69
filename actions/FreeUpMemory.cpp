// SPDX-License-Identifier: MIT
#include "actions/FreeUpMemory.hpp"

#include "actions/ReclaimRun.hpp"

#include <algorithm>
#include <numeric>

namespace vantor {

using platform::ReclaimableGroup;

namespace {

/// Those of these groups that did next to nothing since they were looked at before.
std::vector<ReclaimableGroup> idleOnes(const std::vector<ReclaimableGroup>& before,
                                       std::vector<ReclaimableGroup> now, Pace::Moment::duration since) {
    std::erase_if(now, [&](const ReclaimableGroup& group) {
        const auto then = std::ranges::find(before, group.path, &ReclaimableGroup::path);
        return then == before.end() || group.inactive == 0 || reclaim::isAtWork(*then, group, since);
    });
    std::ranges::sort(now, std::ranges::greater(), &ReclaimableGroup::inactive);
    return now;
}

} // namespace

FreeUpMemory::FreeUpMemory(const KeepGoing& keepGoing, Pace pace)
    : m_pace(std::move(pace)), m_refusal(look(keepGoing)) {
    if (m_refusal != FreeUpRefusal::none) {
        m_bytes = 0;
    }
}

FreeUpRefusal FreeUpMemory::look(const KeepGoing& keepGoing) {
    platform::WorkloadControl& control = platform::currentWorkloadControl();
    m_level = control.memoryLevel();
    if (!m_level) {
        return FreeUpRefusal::notTold;
    }
    if (!control.hasGroups()) {
        return FreeUpRefusal::noGroups;
    }
    const Pace::Moment begin = m_pace.now();
    const std::vector<ReclaimableGroup> groups = control.reclaimableGroups();
    if (groups.empty()) {
        return FreeUpRefusal::noOwnGroups;
    }
    const std::optional<platform::SwapSpace> swap = platform::currentWorkload().swapSpace();
    if (!swap || swap->total == 0) {
        return FreeUpRefusal::noSwap;
    }
    const std::uint64_t room = reclaim::roomIn(*swap);
    if (room == 0) {
        return FreeUpRefusal::swapNearlyFull;
    }
    if (m_level->available > m_level->total / 2) {
        return FreeUpRefusal::enoughAvailable;
    }
    while (m_pace.now() - begin < reclaim::watched) {
        if (!keepGoing()) {
            return FreeUpRefusal::stopped;
        }
        m_pace.wait(std::chrono::milliseconds(100));
    }
    m_looked = m_pace.now();
    m_groups = idleOnes(groups, control.reclaimableGroups(), m_looked - begin);
    m_bytes = std::min(room, std::accumulate(m_groups.begin(), m_groups.end(), std::uint64_t{0},
                                             [](std::uint64_t sum, const ReclaimableGroup& group) {
                                                 return sum + group.inactive;
                                             }));
    return m_bytes < reclaim::step ? FreeUpRefusal::nothingIdle : FreeUpRefusal::none;
}

MemoryFreed FreeUpMemory::run(const KeepGoing& keepGoing, const Progress& progress) const {
    ReclaimRun reclaimRun(m_pace, m_looked, m_bytes);
    for (const ReclaimableGroup& group : m_groups) {
        if (m_bytes == 0 || !reclaimRun.take(group, keepGoing, progress)) {
            break;
        }
    }
    return reclaimRun.result();
}

} // namespace vantor
