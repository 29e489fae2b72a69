// SPDX-License-Identifier: MIT
#include "metrics/DiskStatus.hpp"

#include "SimulatedStore.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

#include <limits>

using namespace vantor;
using namespace vantor::tests;

namespace {

constexpr std::int64_t giga = 1'000'000'000;

class DiskStatusTest : public ::testing::Test {
protected:
    DiskStatusTest() {
        change([](platform::SimulatedState& state) {
            state.volume = platform::VolumeCapacities{128 * giga, 20 * giga, 30 * giga};
        });
    }
    void change(const std::function<void(platform::SimulatedState&)>& with) { machine.change(with); }
    void showReleasable() {
        m_viewer.change([](platform::SimulatedViewerState& state) {
            state.suite = storeHolding(storedFlag("isReleasableSTORAGEShow"));
        });
    }
    static void expect(std::int64_t free, std::int64_t releasable, std::int64_t used) {
        EXPECT_EQ(DiskStatus::getFreeDiskSpace(), free);
        EXPECT_EQ(DiskStatus::getReleasableDiskSpace(), releasable);
        EXPECT_EQ(DiskStatus::getUsedDiskSpace(), used);
    }
    platform::SimulatedMachine machine;

private:
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Machine> m_currentMachine{machine};
    platform::Current<platform::Viewer> m_currentViewer{m_viewer};
};

TEST_F(DiskStatusTest, CountsReleasableSpaceAsFreeOrApart) {
    EXPECT_EQ(DiskStatus::getTotalDiskSpace(), 128 * giga);
    expect(30 * giga, 10 * giga, 98 * giga);
    showReleasable();
    expect(20 * giga, 10 * giga, 98 * giga);
    change([](platform::SimulatedState& state) { state.isiOSAppOnMac = true; });
    expect(30 * giga, 10 * giga, 108 * giga);
}

TEST_F(DiskStatusTest, GivesZerosWhereNothingCanBeHad) {
    change([](platform::SimulatedState& state) { state.documentDirectories.clear(); });
    EXPECT_EQ(DiskStatus::getTotalDiskSpace(), 0);
    expect(0, 0, 0);
    change([](platform::SimulatedState& state) {
        state.documentDirectories = {"/documents"};
        state.volume.reset();
    });
    expect(0, 0, 0);
}

TEST_F(DiskStatusTest, MissingFiguresAreZeroExceptWhereSpaceIsReleasable) {
    showReleasable();
    change([](platform::SimulatedState& s) {
        s.volume = platform::VolumeCapacities{128 * giga, {}, 30 * giga};
    });
    EXPECT_EQ(DiskStatus::getFreeDiskSpace(), 0);
    EXPECT_DEATH((void)DiskStatus::getReleasableDiskSpace(), "lacks the available capacity");
    change([](platform::SimulatedState& s) { s.volume = platform::VolumeCapacities{{}, 20 * giga, {}}; });
    EXPECT_EQ(DiskStatus::getTotalDiskSpace(), 0);
    EXPECT_DEATH((void)DiskStatus::getReleasableDiskSpace(), "lacks the capacity for important usage");
}

TEST_F(DiskStatusTest, LetsNegativeFiguresPassAndStopsOnOverflow) {
    change([](platform::SimulatedState& s) { s.volume = platform::VolumeCapacities{10, 8, 5}; });
    expect(5, -3, 5);
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    change([&](platform::SimulatedState& s) { s.volume = platform::VolumeCapacities{10, 1, least}; });
    EXPECT_DEATH((void)DiskStatus::getReleasableDiskSpace(), "releasable storage overflows");
    EXPECT_DEATH((void)DiskStatus::getUsedDiskSpace(), "used storage overflows");
}

} // namespace
