// SPDX-License-Identifier: MIT
#include "WidgetStage.hpp"

#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;
using platform::SimulatedMachine;
using platform::SimulatedState;

namespace {

std::string processorOf(const TEReportTableViewController& widget) {
    return widget.userCPULabel->text() + '|' + widget.inactiveCPULabel->text();
}

/// Lets a machine's processor work and its network receive.
void move(SimulatedMachine& machine, std::uint32_t user, std::uint32_t idle, std::uint32_t received) {
    machine.change([&](SimulatedState& state) {
        state.cpuLoad.user += user;
        state.cpuLoad.idle += idle;
        state.interfaces->front().receivedBytes += received;
    });
}

TEST(Machines, OneAfterAnotherStartAfresh) {
    {
        WidgetStage old;
        move(old.machine, 1000, 1000, 0);
        old.load();
    }
    WidgetStage young; // with fewer ticks than the one before
    young.load();
    EXPECT_EQ(processorOf(*young.controller), "20.00 %|65.00 %");
}

TEST(Machines, SideBySideAreEachMeasuredOnTheirOwn) {
    SimulatedMachine small(smallMachine());
    SimulatedMachine large(smallMachine());
    large.change([](SimulatedState& state) {
        state.physicalMemory *= 4;
        state.volume->total = 512'000'000'000;
    });
    move(large, 1'000'000, 2'000'000, 900'000'000);
    platform::SimulatedViewer viewer;
    const platform::Current<platform::Viewer> person(viewer);
    HandTurnedLoop loop;
    const auto show = [](SimulatedMachine& machine) {
        const platform::Current<platform::Machine> scope(machine);
        auto widget = ReportInterface::instantiate();
        widget->view();
        return widget;
    };
    const auto first = show(small);
    const auto second = show(large);
    loop.play();
    EXPECT_EQ(first->usedRAMLabel->text(), "3 GB");
    EXPECT_EQ(second->usedRAMLabel->text(), "15 GB");
    EXPECT_EQ(first->totalSTORAGELabel->text(), "128 GB");
    EXPECT_EQ(second->totalSTORAGELabel->text(), "512 GB");
    for (int seconds = 0; seconds < 4; ++seconds) { // both timers of each come round
        move(small, 30, 70, 5000);
        move(large, 600, 400, 70'000);
        loop.advance(1);
    }
    EXPECT_EQ(processorOf(*first), "30.00 %|70.00 %");
    EXPECT_EQ(processorOf(*second), "60.00 %|40.00 %");
    EXPECT_EQ(first->dataReceivedNETWORKLabel->text(), "5 KB/s");
    EXPECT_EQ(second->dataReceivedNETWORKLabel->text(), "70 KB/s");
}

} // namespace
