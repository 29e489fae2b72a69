// SPDX-License-Identifier: MIT
#include "platform/remote/sources/FleetOf.hpp"

#include "platform/remote/sources/NodesSource.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::remote {

FleetOf::FleetOf(std::vector<Part> parts) : m_parts(std::move(parts)) {
    for (const Part& part : m_parts) {
        part.source->setHandler([this] { joinSoon(); });
    }
    join();
}

FleetOf::~FleetOf() {
    if (m_joining != nullptr) {
        m_joining->invalidate();
    }
    for (const Part& part : m_parts) {
        part.source->setHandler({});
    }
}

void FleetOf::start() {
    for (const Part& part : m_parts) {
        part.source->start();
    }
}

void FleetOf::pause() {
    for (const Part& part : m_parts) {
        part.source->pause();
    }
}

bool FleetOf::isSettled() const {
    const bool isLatest = m_joining == nullptr || !m_joining->isValid();
    return isLatest && std::ranges::all_of(m_parts, &FleetSource::isSettled, &Part::source);
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
    for (const Part& part : m_parts) {
        const std::shared_ptr<const FleetSnapshot> snapshot = part.source->snapshot();
        const std::size_t place = joined->sources.size();
        if (snapshot == nullptr) {
            joined->sources.emplace_back().name = part.name;
            continue;
        }
        joined->sources.push_back(snapshot->sources.front());
        joined->machines.reserve(joined->machines.size() + snapshot->machines.size());
        for (const FleetMachine& machine : snapshot->machines) {
            joined->machines.push_back(machine);
            joined->machines.back().source = place;
        }
    }
    m_snapshot = std::move(joined);
    if (m_handler) {
        m_handler();
    }
}

} // namespace vantor::platform::remote
