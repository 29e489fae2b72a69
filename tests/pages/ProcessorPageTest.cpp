// SPDX-License-Identifier: MIT
#include "pages/ProcessorPage.hpp"

#include "FixedWorkload.hpp"
#include "pages/ApplicationProcesses.hpp"
#include "pages/Shares.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

#include <cmath>

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
    const ProcessorPage start = sampler.start();
    EXPECT_EQ(start.processors, std::vector<double>(4, 0));
    EXPECT_EQ(start.state.processors, workload.state.processors);
    EXPECT_TRUE(start.applications.empty());
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
    workload.uses[0].processorTime += 300'000;
    workload.uses[1].processorTime += 100'000;
    const ProcessorPage idle = sampler.page();
    EXPECT_EQ(idle.others, 0);
    EXPECT_DOUBLE_EQ(idle.applications[0].percent, 0.75);
    EXPECT_DOUBLE_EQ(idle.applications[0].cores, 0.03);
    EXPECT_DOUBLE_EQ(idle.applications[1].percent, 0.25);
}

TEST(Shares, AddUpAsTheyAreShown) {
    EXPECT_EQ(tenthsOf({1.28, 0.37, 0.24, 0.02, 0}, 1.91), (std::vector<double>{1.3, 0.4, 0.2, 0, 0}));
    EXPECT_EQ(tenthsOf({0.04, 0.04, 0.04}, 0.12), (std::vector<double>{0.1, 0, 0}));
    EXPECT_EQ(tenthsOf({1.26, 0.7}, std::nan("")), (std::vector<double>{1.26, 0.7})) << "no tick passed";
    ApplicationProcesses application{.rows = {{{}, 0.35}, {{}, {}}, {{}, 0.35}}, .peak = {}};
    fitWithin(0.5, application);
    EXPECT_EQ(application.rows[0].percent, 0.3);
    EXPECT_FALSE(application.rows[1].percent);
    EXPECT_EQ(application.rows[2].percent, 0.2);
    fitWithin(2, application); // the rest ran in processes that have ended
    EXPECT_EQ(application.rows[0].percent, 0.3);
}

} // namespace
