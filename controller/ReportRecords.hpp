// SPDX-License-Identifier: MIT
#pragma once

#include "metrics/CpuStatus.hpp"
#include "metrics/MemoryFigures.hpp"
#include "metrics/NetworkStatus.hpp"
#include "platform/machine/NetworkTotals.hpp"
#include "platform/machine/Source.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace vantor {

/// The four storage numbers of one report, in bytes, and what the file system keeps back beside them.
struct StorageFigures {
    std::int64_t total = 0;
    std::int64_t used = 0;
    std::int64_t free = 0;
    std::int64_t releasable = 0;
    std::int64_t reserved = 0;
};

/// Their texts, which are made on the worker too.
struct StorageTexts {
    std::string total;
    std::string used;
    std::string free;
    std::string releasable;
};

/// The interface counters of one report and how far they moved since the report before.
struct NetworkFigures {
    DataUsageInfo usage;
    platform::NetworkTotals totals; ///< the same counters, in 64 bits where the machine has them
    std::int64_t sentDelta = 0;     ///< bytes
    std::int64_t receivedDelta = 0;
    bool isFirst = false; ///< the deltas count from 0, and no rate was shown
};

/// The rates of these counters, made on the worker too.
struct NetworkTexts {
    std::string sent;
    std::string received;
};

/// The latest report of each section; absent before the first.
struct ReportRecords {
    std::optional<MemoryFigures> memory;
    std::optional<StorageFigures> storage;
    std::optional<CpuUsage> processor;
    std::optional<NetworkFigures> network;

    /// Takes one section's away: what a source told before it failed is no figure.
    void forget(platform::Source source) {
        switch (source) {
        case platform::Source::memory:
            return memory.reset();
        case platform::Source::storage:
            return storage.reset();
        case platform::Source::processor:
            return processor.reset();
        case platform::Source::network:
            return network.reset();
        case platform::Source::preferences:
            return;
        }
    }
};

} // namespace vantor
