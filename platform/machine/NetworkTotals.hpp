// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vantor::platform {

/// Bytes since the links came up, in the 64 bits that the interface entries do not have. They fall where a
/// link goes away or is reset.
struct TrafficTotals {
    std::uint64_t receivedBytes = 0;
    std::uint64_t sentBytes = 0;
    bool operator==(const TrafficTotals&) const = default;
};

/// What the links that count have moved: those listed as "en…" and those listed as "pdp_ip…".
struct NetworkTotals {
    TrafficTotals cards;
    TrafficTotals modems;
    bool operator==(const NetworkTotals&) const = default;
};

} // namespace vantor::platform
