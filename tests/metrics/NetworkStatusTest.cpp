// SPDX-License-Identifier: MIT
#include "metrics/NetworkStatus.hpp"

#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

#include <limits>

using namespace vantor;
using platform::AF_LINK;
using platform::InterfaceAddress;

namespace {

DataUsageInfo usageOf(std::optional<std::vector<InterfaceAddress>> interfaces) {
    platform::SimulatedState state;
    state.interfaces = std::move(interfaces);
    platform::SimulatedMachine machine(state);
    const platform::Current<platform::Machine> scope(machine);
    return NetworkStatus::getDataUsage();
}

TEST(NetworkStatus, SumsLinkLevelCountersByNamePrefix) {
    const DataUsageInfo usage = usageOf({{{"en0", AF_LINK, 1000, 200},
                                          {"en0", 2, 1, 1},
                                          {"en2", AF_LINK, 4, 3},
                                          {"pdp_ip0", AF_LINK, 50, 30},
                                          {"pdp_ip1", AF_LINK, 5, 3},
                                          {"lo0", AF_LINK, 999, 999},
                                          {"En1", AF_LINK, 77, 77},
                                          {"utun1", AF_LINK, 88, 88}}});
    EXPECT_EQ(usage, (DataUsageInfo{1004, 203, 55, 33}));
    constexpr std::uint32_t full = 0xFFFF'FFFF;
    EXPECT_EQ(usageOf({{{"en0", AF_LINK, full, 0}, {"en1", AF_LINK, full, 0}}}).wifiReceived, 2ULL * full);
}

TEST(NetworkStatus, GivesZerosWithoutAListAndStopsAtABrokenEntry) {
    EXPECT_EQ(usageOf(std::nullopt), DataUsageInfo{});
    EXPECT_EQ(usageOf(std::vector<InterfaceAddress>{}), DataUsageInfo{});
    EXPECT_DEATH(usageOf({{{std::nullopt, AF_LINK, 0, 0}}}), "no name");
    EXPECT_DEATH(usageOf({{{"wlan0", std::nullopt, 0, 0}}}), "no address");
}

TEST(Distance, IsExactOrFatal) {
    EXPECT_EQ(distance<std::uint64_t>(5, 8), 3);
    EXPECT_EQ(distance<std::uint64_t>(8, 5), -3);
    EXPECT_EQ(distance<std::uint8_t>(255, 0), -255);
    EXPECT_EQ(distance<std::int8_t>(-128, 127), 255);
    constexpr std::uint64_t half = 1ULL << 63;
    EXPECT_EQ(distance<std::uint64_t>(0, half - 1), std::numeric_limits<std::int64_t>::max());
    EXPECT_DEATH((void)distance<std::uint64_t>(0, half), "distance does not fit");
    EXPECT_DEATH((void)distance<std::uint64_t>(half, 0), "distance does not fit");
    EXPECT_DEATH((void)distance(std::numeric_limits<std::int64_t>::min(), std::int64_t{0}),
                 "distance does not fit");
}

} // namespace
