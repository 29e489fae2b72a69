// SPDX-License-Identifier: MIT
#include "TreeStage.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <utility>

namespace vantor::tests {
namespace {

class ClockTest : public testing::Test {
protected:
    ClockTest() {
        stage.controller->setReportHandler(
            [this](ReportSection section) { ++reports.at(static_cast<std::size_t>(section)); });
        stage.load();
        reports.fill(0);
    }
    void tick() {
        stage.figures.user += 100;
        stage.figures.idle += 300;
    }

    using Reports = std::array<int, 4>; // memory, storage, processor, network
    TreeStage stage;
    Reports reports{};
};

TEST_F(ClockTest, aLongGapBringsOneReportOfEachAndThenTheUsualPace) {
    for (const double gap : {8 * 3600.0, 366 * 86400.0}) { // a night's suspend, a year
        tick();
        stage.advance(gap);
        EXPECT_EQ(reports, (Reports{1, 1, 1, 1}));
        reports.fill(0);
        for (int second = 0; second < 10; ++second) {
            tick();
            stage.advance(1);
        }
        EXPECT_EQ(reports, (Reports{5, 5, 5, 10}));
        reports.fill(0);
    }
}

TEST_F(ClockTest, aBrokenSourceDoesNotChangeThePaceOfAnySection) {
    for (const auto& [source, file] : {std::pair("memory", "proc/meminfo"),
                                       {"processor", "proc/stat"},
                                       {"network", "proc/net/dev"},
                                       {"preferences", "store.plist"}}) {
        stage.advance(0); // all files are there again
        std::filesystem::remove(stage.tree.root() / file);
        std::filesystem::create_directory(stage.tree.root() / file);
        reports.fill(0);
        for (int second = 0; second < 10; ++second) {
            stage.clock->advance(1);
            stage.play();
        }
        EXPECT_EQ(reports, (Reports{5, 5, 5, 10})) << file;
        ASSERT_EQ(stage.machine.failures().size(), 1U) << file;
        EXPECT_EQ(stage.machine.failures()[0].source, source);
        std::filesystem::remove(stage.tree.root() / file);
    }
}

TEST_F(ClockTest, aClockThatIsSetBackStopsNothing) {
    platform::RunLoop& loop = platform::RunLoop::main();
    loop.turn(stage.clock->now() - std::chrono::hours(366 * 24));
    EXPECT_EQ(loop.now(), stage.clock->now());
    tick();
    stage.advance(2);
    EXPECT_EQ(reports, (Reports{1, 1, 1, 1}));
}

TEST_F(ClockTest, twoSamplesAtOneInstantShowNumbers) {
    tick();
    stage.advance(2);
    for (int i = 0; i < 50; ++i) {
        stage.controller->manualInfoRefresh(nullptr);
    }
    stage.play();
    EXPECT_EQ(reports[2], 51) << "a share that is no number would have been asked for again";
    const CpuUsage& usage = *stage.controller->records().processor;
    EXPECT_NEAR(usage.idle + usage.user + usage.system + usage.nice, 100, 1e-9);
    EXPECT_EQ(stage.controller->userCPULabel->text().find("nan"), std::string::npos);
}

} // namespace
} // namespace vantor::tests
