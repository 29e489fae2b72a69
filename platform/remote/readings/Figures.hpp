// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/figures/ProcStat.hpp"
#include "platform/machine/NetworkTotals.hpp"
#include "platform/remote/readings/Reading.hpp"

#include <chrono>
#include <optional>

namespace vantor::platform::remote {

/// Bytes a second.
struct NodeRates {
    double received = 0;
    double sent = 0;
};

/// What two readings of one machine say: the state at the second, the rates between them.
struct NodeFigures {
    std::chrono::nanoseconds interval{}; ///< between the readings
    std::optional<linux::MemorySplit> memory;
    std::optional<NodeVolume> storage;              ///< the fullest real volume
    std::optional<linux::ProcessorTimes> processor; ///< hundredths of a second that passed in the interval
    std::optional<NodeRates> network;               ///< of the links that count
    std::optional<TrafficTotals> traffic;           ///< what the links that count told at the second reading
    bool hasRestarted = false;                      ///< booted in between: no rate holds across that
};

/// Pure. Rates are differences of whole counters over the interval; a counter that fell counts as nothing
/// for it, and so does one that is in only one of the readings: a processor or a link that went or came.
/// Without time between the readings, after a restart, or where nothing was counted twice, a rate is absent.
[[nodiscard]] NodeFigures figuresBetween(const Reading& before, const Reading& after);

} // namespace vantor::platform::remote
