// SPDX-License-Identifier: MIT
#include "platform/remote/readings/Figures.hpp"

#include "platform/linux/figures/TickAccount.hpp"
#include "platform/remote/readings/LinkChoice.hpp"
#include "platform/remote/readings/VolumeChoice.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::platform::remote {

namespace {

/// The kernel works the time of boot out of two clocks, so that it wobbles by a second.
constexpr double bootWobble = 2;

bool hasRestarted(const Reading& before, const Reading& after) {
    return before.bootSeconds && after.bootSeconds &&
           std::abs(*after.bootSeconds - *before.bootSeconds) > bootWobble;
}

std::uint64_t& part(linux::ProcessorTimes& times, ModeKind kind) {
    switch (kind) {
    case ModeKind::user:
        return times.user;
    case ModeKind::nice:
        return times.nice;
    case ModeKind::idle:
        return times.idle;
    default:
        return times.system;
    }
}

/// No processor has more time than passes; a counter that came back with all that it ever held does.
std::optional<linux::ProcessorTimes> processorBetween(const Reading& before, const Reading& after,
                                                      double seconds) {
    constexpr double hundredths = 100;
    constexpr double slack = 2; // the answers' own delays
    linux::ProcessorTimes passed;
    for (auto old = before.processor.begin(); const ModeTime& time : after.processor) {
        while (old != before.processor.end() && old->key < time.key) {
            ++old;
        }
        if (old == before.processor.end() || old->key != time.key) {
            continue;
        }
        const double difference = time.seconds - old->seconds;
        if (difference > 0 && difference <= seconds * slack + slack) {
            part(passed, time.kind) += static_cast<std::uint64_t>(std::llround(difference * hundredths));
        }
    }
    return linux::sum(passed) > 0 ? std::optional(passed) : std::nullopt;
}

double rise(const std::optional<std::uint64_t>& before, const std::optional<std::uint64_t>& after) {
    return before && after && *after > *before ? static_cast<double>(*after - *before) : 0;
}

std::optional<NodeRates> ratesBetween(const Reading& before, const Reading& after, double seconds) {
    std::optional<NodeRates> rates;
    for (const NodeLink* const link : countedLinks(after)) {
        const auto old = std::ranges::find(before.links, link->name, &NodeLink::name);
        if (old == before.links.end() || !old->received || !link->received) {
            continue;
        }
        rates = rates.value_or(NodeRates());
        rates->received += rise(old->received, link->received) / seconds;
        rates->sent += rise(old->sent, link->sent) / seconds;
    }
    return rates;
}

/// Sums that a broken answer could push past 64 bits: each counter has 63 at most, and they wrap like any.
std::optional<TrafficTotals> trafficOf(const Reading& reading) {
    std::optional<TrafficTotals> traffic;
    for (const NodeLink* const link : countedLinks(reading)) {
        if (link->received && link->sent) {
            traffic = traffic.value_or(TrafficTotals());
            traffic->receivedBytes += *link->received;
            traffic->sentBytes += *link->sent;
        }
    }
    return traffic;
}

} // namespace

NodeFigures figuresBetween(const Reading& before, const Reading& after) {
    NodeFigures figures;
    figures.memory = after.memory;
    if (const NodeVolume* const volume = fullestVolume(after)) {
        figures.storage = *volume;
    }
    figures.traffic = trafficOf(after);
    figures.interval = std::max(std::chrono::nanoseconds(0), after.taken - before.taken);
    figures.hasRestarted = hasRestarted(before, after);
    const double seconds = std::chrono::duration<double>(figures.interval).count();
    if (seconds > 0 && !figures.hasRestarted) {
        figures.processor = processorBetween(before, after, seconds);
        figures.network = ratesBetween(before, after, seconds);
    }
    return figures;
}

} // namespace vantor::platform::remote
