// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/Checked.hpp"

#include <concepts>
#include <cstdint>
#include <type_traits>

namespace vantor {

/// The interfaces' byte counters, summed, as they stand: no rates.
struct DataUsageInfo {
    std::uint64_t wifiReceived = 0;
    std::uint64_t wifiSent = 0;
    std::uint64_t wirelessWanDataReceived = 0;
    std::uint64_t wirelessWanDataSent = 0;
    bool operator==(const DataUsageInfo&) const = default;
};

/// Samples the network interfaces.
class NetworkStatus {
public:
    /// Link-level interfaces whose names begin with "en" count as Wi-Fi, whatever their medium; those with
    /// "pdp_ip" as wireless WAN; others not at all. Each counter is 32 bits wide and wraps. Four zeros when
    /// the interfaces cannot be listed. An entry without name or address, or a sum past 64 bits, is fatal.
    /// Any thread.
    [[nodiscard]] static DataUsageInfo getDataUsage();
};

/// to − from, exactly: negative when the number went down. A distance of 2^63 or more either way is fatal.
template<std::integral T>
[[nodiscard]] constexpr std::int64_t distance(T from, T to) {
    using Magnitude = std::make_unsigned_t<T>;
    const bool down = from > to;
    const auto larger = static_cast<Magnitude>(down ? from : to);
    const auto smaller = static_cast<Magnitude>(down ? to : from);
    const auto magnitude = platform::checkedConvert<std::int64_t>(
        static_cast<Magnitude>(larger - smaller), "a distance does not fit in a signed 64-bit number");
    return down ? -magnitude : magnitude;
}

} // namespace vantor
