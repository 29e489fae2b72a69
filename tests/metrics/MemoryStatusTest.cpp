// SPDX-License-Identifier: MIT
#include "metrics/MemoryStatus.hpp"

#include "SimulatedStore.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;

namespace {

constexpr std::int64_t total = 4'294'967'296;

class MemoryStatusTest : public ::testing::Test {
protected:
    MemoryStatusTest() {
        change([](platform::SimulatedState& state) { state.physicalMemory = total; });
    }
    void change(const std::function<void(platform::SimulatedState&)>& with) { m_machine.change(with); }

    void hideInactive() {
        m_viewer.change([](platform::SimulatedViewerState& state) {
            state.suite = storeHolding(storedFlag("isInactiveRAMHide"));
        });
    }

private:
    platform::SimulatedMachine m_machine;
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Machine> m_currentMachine{m_machine};
    platform::Current<platform::Viewer> m_currentViewer{m_viewer};
};

TEST_F(MemoryStatusTest, MakesTenFiguresInOrder) {
    platform::vm_statistics64 record{};
    record.free_count = 100;
    record.inactive_count = 50;
    record.active_count = 7;
    record.wire_count = 10;
    record.purgeable_count = 3;
    record.compressor_page_count = 5;
    const MemoryFigures expected{
        {"total", total},      {"used", total - 1'638'400}, {"free", 1'638'400},
        {"active", 114'688},   {"inactive", 819'200},       {"wire", 163'840},
        {"purgeable", 49'152}, {"compressor", 81'920},      {"free+inactive", 2'457'600},
        {"pressure", 245'760}};
    EXPECT_EQ(MemoryStatus::getMemoryStatus(record), expected);

    hideInactive();
    const MemoryFigures hidden = MemoryStatus::getMemoryStatus(record);
    EXPECT_EQ(hidden.at("used"), total - 2'457'600);
    EXPECT_EQ(hidden.at("free"), 1'638'400);
}

TEST_F(MemoryStatusTest, UsedMayBeNegativeAndAPageSizeMayBeUnknown) {
    platform::vm_statistics64 record{};
    record.free_count = 1'000'000;
    EXPECT_EQ(MemoryStatus::getMemoryStatus(record).at("used"), total - 16'384'000'000);
    change([](platform::SimulatedState& state) { state.pageSizeResult = platform::KERN_FAILURE; });
    EXPECT_EQ(MemoryStatus::getMemoryStatus(record).at("free"), 0);
    EXPECT_EQ(MemoryStatus::getMemoryStatus(record).at("used"), total);
}

TEST_F(MemoryStatusTest, IsAbsentWhenTheHostCannotTell) {
    EXPECT_TRUE(getVMStatistics64().has_value());
    change([](platform::SimulatedState& state) { state.virtualMemoryResult = platform::KERN_FAILURE; });
    EXPECT_FALSE(getVMStatistics64().has_value());
}

TEST_F(MemoryStatusTest, StopsOnFiguresThatDoNotFit) {
    const platform::vm_statistics64 record{};
    change([](platform::SimulatedState& state) { state.pageSize = 1ULL << 32; });
    EXPECT_DEATH((void)MemoryStatus::getMemoryStatus(record), "page size does not fit");
    change([](platform::SimulatedState& state) {
        state.pageSize = 4096;
        state.physicalMemory = 1ULL << 63;
    });
    EXPECT_DEATH((void)MemoryStatus::getMemoryStatus(record), "physical memory does not fit");
    change([](platform::SimulatedState& state) {
        state.pageSize = 0xFFFF'FFFF;
        state.physicalMemory = 0;
    });
    platform::vm_statistics64 huge{};
    huge.inactive_count = 0xFFFF'FFFF; // just under 2^64 bytes
    EXPECT_DEATH((void)MemoryStatus::getMemoryStatus(huge), "memory figure overflows");
    EXPECT_DEATH((void)MemoryFigures().at("used"), "no memory figure under the key \"used\"");
}

} // namespace
