// SPDX-License-Identifier: MIT
#include "TreeStage.hpp"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <utility>

namespace vantor::tests {
namespace {

class ClockTest : public testing::Test {
protected:
    ClockTest() {
        stage.controller->setReportHandler(
            [this](platform::Source section) { ++reports.at(static_cast<std::size_t>(section)); });
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

TEST_F(ClockTest, ALongGapBringsOneReportOfEachAndThenTheUsualPace) {
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

TEST_F(ClockTest, ABrokenSourceDoesNotChangeThePaceOfAnySection) {
    for (const auto& [source, file] : {std::pair(platform::Source::memory, "proc/meminfo"),
                                       {platform::Source::processor, "proc/stat"},
                                       {platform::Source::network, "proc/net/dev"},
                                       {platform::Source::preferences, storeFile.c_str()}}) {
        stage.advance(0); // all files are there again
        std::filesystem::remove(stage.tree.root() / file);
        std::filesystem::create_directory(stage.tree.root() / file);
        reports.fill(0);
        for (int second = 0; second < 10; ++second) {
            tick();
            stage.advance(1);
        }
        EXPECT_EQ(reports, (Reports{5, 5, 5, 10})) << file;
        EXPECT_EQ(stage.failedSources(), std::string(sourceName(source)) + ' ') << file;
        std::filesystem::remove(stage.tree.root() / file);
    }
}

} // namespace
} // namespace vantor::tests
