// SPDX-License-Identifier: MIT
#include "platform/remote/sources/FleetOf.hpp"

#include "platform/remote/sources/NodesSource.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::remote {

FleetOf::FleetOf(std::vector<FleetSource*> sources) : m_sources(std::move(sources)) {
    for (FleetSource* const source : m_sources) {
        source->setHandler([this] { joinSoon(); });
    }
    join();
}

FleetOf::~FleetOf() {
    if (m_joining != nullptr) {
        m_joining->invalidate();
    }
    for (FleetSource* const source : m_sources) {
        source->setHandler({});
    }
}

void FleetOf::start() {
    for (FleetSource* const source : m_sources) {
        source->start();
    }
}

void FleetOf::pause() {
    for (FleetSource* const source : m_sources) {
        source->pause();
    }
}

bool FleetOf::isSettled() const {
    const bool isLatest = m_joining == nullptr || !m_joining->isValid();
    return isLatest && std::ranges::all_of(m_sources, &FleetSource::isSettled);
}

/// At once, unless it was just done: sources change one after the other.
void FleetOf::joinSoon() {
    if (m_joining != nullptr && m_joining->isValid()) {
        return;
    }
    const Instant now = RunLoop::main().now();
    const Instant earliest = *m_joined + snapshotPace(m_snapshot->machines.size());
    if (earliest <= now) {
        join();
    } else {
        m_joining = NSTimer::scheduledTimerWithTimeInterval(
            std::chrono::duration<double>(earliest - now).count(), [this] { join(); }, false);
    }
}

void FleetOf::join() {
    m_joined = RunLoop::main().now();
    auto joined = std::make_shared<FleetSnapshot>();
    for (const FleetSource* const source : m_sources) {
        const std::shared_ptr<const FleetSnapshot> part = source->snapshot();
        if (part == nullptr) {
            continue;
        }
        const std::size_t before = joined->sources.size();
        joined->sources.insert(joined->sources.end(), part->sources.begin(), part->sources.end());
        joined->machines.reserve(joined->machines.size() + part->machines.size());
        for (const FleetMachine& machine : part->machines) {
            joined->machines.push_back(machine);
            joined->machines.back().source += before;
        }
    }
    m_snapshot = std::move(joined);
    if (m_handler) {
        m_handler();
    }
}

} // namespace vantor::platform::remote
