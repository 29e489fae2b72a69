// SPDX-License-Identifier: MIT
#include "WidgetStage.hpp"
#include "controller/ByteText.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vantor;
using namespace vantor::tests;

namespace {

TEST(Reports, ShowMemoryAsSampled) {
    WidgetStage stage;
    stage.load();
    auto& controller = *stage.controller;
    EXPECT_EQ(controller.freeRAMLabel->text(), "1 GB");
    EXPECT_EQ(controller.usedRAMLabel->text(), "3 GB");
    EXPECT_EQ(stage.model(controller.ramChartView()).progress(), 0.75);
    stage.setStore(storedFlag("isInactiveRAMHide"));
    stage.advance(2);
    EXPECT_EQ(controller.freeRAMLabel->text(), "2 GB");
    EXPECT_EQ(controller.usedRAMLabel->text(), "2 GB");
    EXPECT_EQ(stage.model(controller.ramChartView()).progress(), 0.5);
    EXPECT_EQ(controller.records().memory->at("total"), 4'294'967'296);
    stage.machine.change([](platform::SimulatedState& s) { s.virtualMemoryResult = platform::KERN_FAILURE; });
    EXPECT_DEATH(stage.advance(2), "no memory figure under the key \"free");
}

TEST(Reports, ShowStorageAndTheReleasableRowByPreference) {
    WidgetStage stage;
    stage.load();
    auto& controller = *stage.controller;
    EXPECT_EQ(controller.totalSTORAGELabel->text(), "128 GB");
    EXPECT_EQ(controller.usedSTORAGELabel->text(), "98 GB");
    EXPECT_EQ(controller.freeSTORAGELabel->text(), "30 GB");
    EXPECT_EQ(controller.releasableSTORAGELabel->text(), "10 GB"); // filled although hidden
    EXPECT_TRUE(controller.releasableSTORAGEStackView->isHidden());
    EXPECT_EQ(stage.model(controller.storateChartView()).progress(), 98.0 / 128.0);
    stage.setStore(storedFlag("isReleasableSTORAGEShow"));
    stage.machine.change([](platform::SimulatedState& state) {
        state.volume = platform::VolumeCapacities{128'000'000'000, 0, 0};
    });
    stage.advance(2);
    EXPECT_FALSE(controller.releasableSTORAGEStackView->isHidden());
    EXPECT_EQ(controller.freeSTORAGELabel->text(), "0 KB");
    stage.machine.change([](platform::SimulatedState& state) { state.volume.reset(); });
    stage.advance(2);
    EXPECT_EQ(controller.totalSTORAGELabel->text(), "0 KB");
    EXPECT_TRUE(std::isnan(stage.model(controller.storateChartView()).progress()));
}

TEST(Reports, ShowProcessorSharesAndAskAgainWhenNoTickPassed) {
    WidgetStage stage;
    stage.load();
    auto& controller = *stage.controller;
    EXPECT_EQ(controller.userCPULabel->text(), "20.00 %");
    EXPECT_EQ(controller.systemCPULabel->text(), "10.00 %");
    EXPECT_EQ(controller.inactiveCPULabel->text(), "65.00 %");
    EXPECT_DOUBLE_EQ(stage.model(controller.cpuChartView()).progress(), 0.35);

    controller.makeReports(); // no tick since
    stage.play();
    EXPECT_EQ(controller.userCPULabel->text(), "nan %");
    EXPECT_TRUE(std::isnan(stage.model(controller.cpuChartView()).progress()));
    EXPECT_EQ(stage.loop.queue.waiting(), 1U); // one more report
    stage.machine.change([](platform::SimulatedState& state) { state.cpuLoad.user += 4; });
    stage.play();
    EXPECT_EQ(controller.userCPULabel->text(), "100.00 %");
    EXPECT_EQ(stage.loop.queue.waiting(), 0U);
}

TEST(Reports, ShowNetworkRatesFromTheSecondTickOn) {
    WidgetStage stage;
    stage.load();
    auto& controller = *stage.controller;
    const auto move = [&](std::int64_t received, std::int64_t sent) {
        stage.machine.change([&](platform::SimulatedState& state) {
            auto& wifi = state.interfaces->front();
            wifi.receivedBytes = static_cast<std::uint32_t>(wifi.receivedBytes + received);
            wifi.sentBytes = static_cast<std::uint32_t>(wifi.sentBytes + sent);
        });
        stage.advance(1);
    };
    const auto shown = [&] {
        return controller.dataReceivedNETWORKLabel->text() + "|" + controller.dataSentNETWORKLabel->text();
    };
    move(0, 0);
    EXPECT_EQ(shown(), "|");
    EXPECT_TRUE(controller.records().network->isFirst);
    move(0, 2000);
    EXPECT_EQ(shown(), "0 KB/s|2 KB/s");
    move(512, 1);
    EXPECT_EQ(shown(), "512 Bs/s|1 B/s");
    move(-2000, 0); // an interface was reset
    EXPECT_EQ(shown(), "-2 KB/s|0 KB/s");

    // After a pause the counters are taken up again without a rate over the whole of it.
    stage.machine.change(
        [](platform::SimulatedState& s) { s.interfaces->front().receivedBytes += 900'000'000; });
    platform::RunLoop::main().restartTimers(stage.loop.clock.now());
    controller.resumeNETWORKStatus();
    stage.play();
    EXPECT_EQ(shown(), "-2 KB/s|0 KB/s");
    move(1000, 0);
    EXPECT_EQ(shown(), "1 KB/s|0 KB/s");
}

TEST(Reports, CountModemsAsTheyCountCards) {
    WidgetStage stage;
    stage.load();
    const auto move = [&](std::uint32_t received, std::uint32_t sent) {
        stage.machine.change([&](platform::SimulatedState& state) {
            state.interfaces = {{"en0", platform::AF_LINK, 1000, 2000},
                                {"pdp_ip0", platform::AF_LINK, received, sent}};
        });
        stage.advance(1);
    };
    move(0, 0);
    move(3000, 7000);
    EXPECT_EQ(stage.controller->dataReceivedNETWORKLabel->text(), "3 KB/s");
    EXPECT_EQ(stage.controller->dataSentNETWORKLabel->text(), "7 KB/s");
}

/// An idle hour, then a busy second: the share is that of the second, whatever the interval.
TEST(Reports, ShowNoShareOfAPause) {
    WidgetStage stage;
    stage.setStore(storedText("refreshSeconds", "60"));
    stage.load();
    stage.machine.change([](platform::SimulatedState& state) { state.cpuLoad.idle += 360'000; });
    stage.controller->resumeReports();
    stage.controller->resumeReports(); // pressed twice: one share all the same
    stage.play();
    EXPECT_EQ(stage.controller->inactiveCPULabel->text(), "65.00 %") << "what was on screen stays";
    stage.machine.change([](platform::SimulatedState& state) { state.cpuLoad.user += 100; });
    stage.advance(1);
    EXPECT_EQ(stage.controller->userCPULabel->text(), "100.00 %");
    EXPECT_EQ(stage.controller->inactiveCPULabel->text(), "0.00 %");
}

TEST(Reports, RewriteTheFormattersWordsBySection) {
    const WidgetStage stage;
    EXPECT_EQ(trafficText(std::numeric_limits<std::int64_t>::min()), "-9.22 EB");
    EXPECT_EQ(memoryText(0), "Zero KB"); // memory keeps the formatter's word
    EXPECT_EQ(storageText(0), "0 KB");
    EXPECT_EQ(storageText(1), "1 byte");
}

TEST(Reports, AskTheVolumeAndTheStoreInOrder) {
    std::string asked;
    const auto note = [&](platform::SimulatedState&, platform::MachineQuery query) {
        asked += query == platform::MachineQuery::volume           ? "v"
                 : query == platform::MachineQuery::physicalMemory ? "p"
                 : query == platform::MachineQuery::pageSize       ? "z"
                 : query == platform::MachineQuery::virtualMemory  ? "m"
                 : query == platform::MachineQuery::cpuLoad        ? "c"
                                                                   : "";
    };
    WidgetStage stage(true, note, [&] { asked += "s"; });
    stage.controller->view();
    asked.clear();
    stage.loop.queue.drain();
    // Storage: total twice, used twice (the store for itself, total, free with the store), free, releasable.
    EXPECT_EQ(asked, "vv"
                     "svvs"
                     "svvs"
                     "vs"
                     "v"
                     "m"
                     "zpsp"
                     "c");
    asked.clear();
    stage.loop.clock.advance(0); // display: the row's flag, the inactive flag, and the colour of each ring
    EXPECT_EQ(asked, "ss"
                     "ss"
                     "s");
}

TEST(Reports, TellAHostThatListens) {
    WidgetStage stage;
    std::vector<platform::Source> heard;
    stage.controller->setReportHandler([&](platform::Source section) { heard.push_back(section); });
    stage.load();
    stage.advance(1);
    EXPECT_EQ(heard, (std::vector{platform::Source::storage, platform::Source::memory,
                                  platform::Source::processor, platform::Source::network}));
    EXPECT_EQ(stage.controller->records().storage->releasable, 10'000'000'000);
}

} // namespace
