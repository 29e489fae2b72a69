// SPDX-License-Identifier: MIT
#include "metrics/CpuStatus.hpp"

#include "platform/core/WorkItem.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <thread>
#include <vector>

using namespace vantor;

namespace {

void expectShares(double system, double user, double idle, double nice) {
    const CpuUsage usage = CpuStatus::getCpuUsage();
    EXPECT_DOUBLE_EQ(usage.system, system);
    EXPECT_DOUBLE_EQ(usage.user, user);
    EXPECT_DOUBLE_EQ(usage.idle, idle);
    EXPECT_DOUBLE_EQ(usage.nice, nice);
}

// The counters live as long as the process, so the samples of one test build on each other.
TEST(CpuStatus, ReportsTheTimeSinceThePreviousSample) {
    platform::SimulatedMachine machine;
    const platform::Current<platform::Machine> scope(machine);
    const auto counters = [&](platform::host_cpu_load_info load) {
        machine.change([&](platform::SimulatedState& state) { state.cpuLoad = load; });
    };
    counters({.user = 300, .system = 100, .idle = 550, .nice = 50});
    expectShares(10.0, 30.0, 55.0, 5.0); // since boot
    counters({.user = 330, .system = 110, .idle = 600, .nice = 60});
    expectShares(10.0, 30.0, 50.0, 10.0);
    const CpuUsage still = CpuStatus::getCpuUsage();
    EXPECT_TRUE(std::isnan(still.system) && std::isnan(still.user) && std::isnan(still.idle) &&
                std::isnan(still.nice));

    counters({.user = 330, .system = 110, .idle = 599, .nice = 61});
    EXPECT_DEATH((void)CpuStatus::getCpuUsage(), "went backwards");
    counters({.user = 331, .system = 111, .idle = 601, .nice = 61});
    expectShares(25, 25, 25, 25);
    machine.change([](platform::SimulatedState& state) { state.cpuLoadResult = platform::KERN_FAILURE; });
    EXPECT_DEATH((void)CpuStatus::getCpuUsage(), "went backwards"); // zeros after a sample

    // Overlapping samples: each sees the counters at or after the one before it.
    machine.change([](platform::SimulatedState& state) { state.cpuLoadResult = platform::KERN_SUCCESS; });
    std::atomic<int> sampled = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(platform::WorkItem([&] {
            for (int k = 0; k < 200; ++k) {
                machine.change([](platform::SimulatedState& state) { ++state.cpuLoad.idle; });
                (void)CpuStatus::getCpuUsage();
                ++sampled;
            }
        }));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(sampled, 800);
}

} // namespace
