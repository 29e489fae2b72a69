// SPDX-License-Identifier: MIT
#include "controller/ReportInterface.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "platform/core/MakeForEver.hpp"
#include "platform/linux/LinuxMachine.hpp"
#include "platform/linux/user/LinuxViewer.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace vantor::tests {
namespace {

// The real machine, the real workers: reports that overtake each other. Above all for the thread sanitizer.
TEST(Overlap, RefreshesOnTopOfEachOtherLeaveWholeFigures) {
    // The timers' last reports may still be under way when the test ends.
    auto& viewer = platform::makeForEver<platform::linux::LinuxViewer>();
    auto& machine = platform::makeForEver<platform::linux::LinuxMachine>();
    const platform::Current<platform::Machine> currentMachine(machine);
    const platform::Current<platform::Viewer> currentViewer(viewer);
    const auto controller = ReportInterface::instantiate();
    std::array<int, 4> reports{};
    controller->setReportHandler([&](platform::Source section) {
        ++reports.at(static_cast<std::size_t>(section));
        const ReportRecords& records = controller->records();
        if (section == platform::Source::memory) {
            EXPECT_EQ(records.memory->at("total"), static_cast<std::int64_t>(machine.physicalMemory()));
            EXPECT_EQ(records.memory->at("used"), records.memory->at("total") - records.memory->at("free"));
        } else if (section == platform::Source::storage) {
            EXPECT_GT(records.storage->total, 0);
            EXPECT_LE(records.storage->used, records.storage->total);
        } else if (section == platform::Source::processor) {
            const CpuUsage& usage = *records.processor;
            EXPECT_NEAR(usage.user + usage.system + usage.idle + usage.nice, 100, 1e-6);
        }
    });
    controller->view();
    constexpr int times = 40;
    for (int i = 0; i < times; ++i) {
        controller->manualInfoRefresh(nullptr);
        controller->reportNETWORKStatus();
    }
    EXPECT_TRUE(hosts::common::turnUntil([&] { return *std::ranges::min_element(reports) >= times; }, 60));
    platform::RunLoop::main().clear(); // the timers hold the controller
}

} // namespace
} // namespace vantor::tests
