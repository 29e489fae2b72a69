// SPDX-License-Identifier: MIT
#include "platform/remote/RemoteMachine.hpp"

#include "platform/core/FatalStop.hpp"
#include "platform/linux/records/PageCounts.hpp"
#include "platform/remote/readings/VolumeChoice.hpp"
#include "platform/time/DispatchQueue.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vantor::platform::remote {

namespace {

/// /proc/meminfo is in KiB, so that this page size loses nothing up to 4 TiB.
constexpr std::uint64_t smallestPage = 1024;
/// How far apart the processor's questions are, about: it decides only how fine the counters are.
constexpr std::chrono::seconds usualRefresh{2};
/// A second's traffic of the fastest links there are stays far below; the sums last for centuries.
constexpr double fastest = 1e14;

std::int64_t bytes(std::uint64_t value) {
    return static_cast<std::int64_t>(std::min(value, std::uint64_t{1} << 62));
}

VolumeCapacities capacitiesOf(const NodeVolume& volume) {
    const std::uint64_t usable = usableSize(volume);
    const std::int64_t total = bytes(usable);
    const std::int64_t available = std::min(bytes(*volume.available), total);
    const std::int64_t important = std::clamp(bytes(volume.purgeable.value_or(0)), available, total);
    return {total, available, important, bytes(*volume.size - usable)};
}

SourceFailure missing(Source source, const NodeFigures& figures) {
    return {source, figures.hasRestarted ? "it has just restarted" : "the node does not tell it"};
}

} // namespace

RemoteMachine::RemoteMachine(const NodeFigures& figures) : m_shown(shownFrom(figures, nullptr)) {
    if (!figures.memory) {
        fatalStop("another machine was put in place before it told of its memory");
    }
}

std::shared_ptr<const RemoteMachine::Shown> RemoteMachine::shownFrom(const NodeFigures& figures,
                                                                     const Shown* before) {
    auto shown = std::make_shared<Shown>(before != nullptr ? *before : Shown());
    shown->failures.clear();
    if (figures.memory) {
        shown->memory = *figures.memory;
    } else {
        shown->failures.push_back(missing(Source::memory, figures));
    }
    if (figures.storage) {
        shown->volume = capacitiesOf(*figures.storage);
        shown->folders = std::make_shared<const std::vector<std::string>>(1, figures.storage->mountPoint);
    } else {
        shown->failures.push_back(missing(Source::storage, figures));
    }
    if (figures.processor) {
        shown->processor = *figures.processor;
    } else {
        shown->failures.push_back(missing(Source::processor, figures));
    }
    if (figures.network) {
        shown->network = *figures.network;
        shown->traffic = figures.traffic;
    } else {
        shown->failures.push_back(missing(Source::network, figures));
    }
    if (shown->folders == nullptr) {
        shown->folders = std::make_shared<const std::vector<std::string>>();
    }
    if (linux::ProcessorTimes& times = shown->processor; times == linux::ProcessorTimes()) {
        times.idle = 1; // some time must pass between two answers; the source is flagged
    }
    return shown;
}

void RemoteMachine::show(const NodeFigures& figures) {
    const std::lock_guard lock(m_mutex);
    m_shown = shownFrom(figures, m_shown.get());
}

void RemoteMachine::turnTo(const NodeFigures& figures) {
    const std::lock_guard lock(m_mutex);
    m_shown = shownFrom(figures, nullptr);
}

void RemoteMachine::lose(const std::string& reason) {
    const std::lock_guard lock(m_mutex);
    auto shown = std::make_shared<Shown>(*m_shown);
    shown->failures.clear();
    for (const Source source : {Source::memory, Source::storage, Source::processor, Source::network}) {
        shown->failures.push_back({source, reason});
    }
    m_shown = std::move(shown);
}

std::shared_ptr<const RemoteMachine::Shown> RemoteMachine::shown() {
    const std::lock_guard lock(m_mutex);
    const std::uint64_t workItem = currentWorkItem();
    if (workItem == 0) {
        return m_shown;
    }
    const auto held = std::ranges::find(m_held, workItem, &Held::workItem);
    if (held != m_held.end()) {
        return held->shown;
    }
    m_held[m_nextHeld++ % m_held.size()] = {workItem, m_shown};
    return m_shown;
}

kern_return_t RemoteMachine::hostPageSize(std::uint64_t& size) {
    size = linux::pageSizeFor(shown()->memory.total, smallestPage);
    return KERN_SUCCESS;
}

kern_return_t RemoteMachine::hostVirtualMemory(vm_statistics64& record) {
    const linux::MemorySplit memory = shown()->memory;
    record = linux::pageCounts(memory, linux::pageSizeFor(memory.total, smallestPage));
    return KERN_SUCCESS;
}

kern_return_t RemoteMachine::hostCpuLoad(host_cpu_load_info& record) {
    const linux::ProcessorTimes passed = shown()->processor;
    const std::lock_guard lock(m_mutex);
    record = m_scale.add(passed, usualRefresh);
    return KERN_SUCCESS;
}

std::uint64_t RemoteMachine::physicalMemory() {
    return shown()->memory.total;
}

std::optional<std::vector<InterfaceAddress>> RemoteMachine::interfaceAddresses() {
    const NodeRates rates = shown()->network;
    const std::lock_guard lock(m_mutex);
    m_received += std::min(rates.received, fastest);
    m_sent += std::min(rates.sent, fastest);
    m_receivedCounter.advance(static_cast<std::uint64_t>(m_received));
    m_sentCounter.advance(static_cast<std::uint64_t>(m_sent));
    std::vector<InterfaceAddress> addresses;
    const std::size_t parts = std::max(m_receivedCounter.parts(), m_sentCounter.parts());
    for (std::size_t i = 0; i < parts; ++i) {
        addresses.push_back({"en0", AF_LINK, m_receivedCounter.part(i), m_sentCounter.part(i)});
    }
    return addresses;
}

std::optional<NetworkTotals> RemoteMachine::networkTotals() {
    const std::optional<TrafficTotals> traffic = shown()->traffic;
    return NetworkTotals{traffic.value_or(TrafficTotals()), {}};
}

std::shared_ptr<const std::vector<std::string>> RemoteMachine::documentDirectories() {
    return shown()->folders;
}

std::optional<VolumeCapacities> RemoteMachine::volumeCapacities(const std::string& /*path*/) {
    return shown()->volume;
}

std::vector<SourceFailure> RemoteMachine::failures() {
    const std::lock_guard lock(m_mutex);
    return m_shown->failures;
}

} // namespace vantor::platform::remote
