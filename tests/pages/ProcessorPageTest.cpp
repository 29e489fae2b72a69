// SPDX-License-Identifier: MIT
#include "pages/ProcessorPage.hpp"

#include "FixedWorkload.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;

namespace {

TEST(ProcessorPage, SharesAddUpToTheRing) {
    platform::SimulatedMachine machine;
    FixedWorkload workload;
    const platform::Current<platform::Machine> currentMachine(machine);
    const platform::Current<platform::Workload> currentWorkload(workload);
    const auto pass = [&](std::uint32_t busy, std::uint32_t idle) {
        machine.change([=](platform::SimulatedState& state) {
            state.cpuLoad.user += busy;
            state.cpuLoad.idle += idle;
        });
    };
    std::chrono::steady_clock::time_point now;
    pass(1000, 0); // before the interval
    workload.state.processors = {{100, 100}, {500, 7}, {0, 50}, {0, 0}};
    workload.uses = {{.name = "lazy", .processorTime = 9'000'000},
                     {.name = "busy", .processorTime = 1'000'000},
                     {.name = "session", .isService = true, .processorTime = 0},
                     {.name = "shrunk", .processorTime = 5'000'000}};
    ProcessorPageSampler sampler([&now] { return now; });
    now += std::chrono::seconds(2);
    pass(300, 100);
    workload.state.processors = {{150, 150}, {700, 7}, {0, 49}, {0, 0}}; // idle time may fall
    workload.uses = {{.name = "lazy", .processorTime = 9'000'000},
                     {.name = "busy", .processorTime = 3'600'000},
                     {.name = "session", .isService = true, .processorTime = 800'000},
                     {.name = "fresh", .processorTime = 400'000},
                     {.name = "shrunk", .processorTime = 4'000'000}};
    const ProcessorPage page = sampler.page();
    EXPECT_EQ(page.busy(), 75);
    EXPECT_EQ(page.processors, (std::vector<double>{50, 100, 0, 0}));
    std::string order;
    double sum = page.others;
    for (const ProcessorShare& share : page.applications) {
        order += share.use.name + ' ';
        sum += share.percent;
    }
    EXPECT_EQ(order, "busy fresh lazy shrunk session ");
    EXPECT_DOUBLE_EQ(page.applications[0].cores, 1.3);
    EXPECT_DOUBLE_EQ(page.applications[0].percent, 1.3 / 4 * 100);
    EXPECT_DOUBLE_EQ(sum, page.busy());

    now += std::chrono::seconds(1);
    pass(1, 99); // less than the applications say: their clocks differ
    workload.uses.front().processorTime += 1'000'000;
    EXPECT_EQ(sampler.page().others, 0);
}

} // namespace
