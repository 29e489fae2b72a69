// SPDX-License-Identifier: MIT
#include "WidgetStage.hpp"
#include "controller/Sections.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;
using platform::CGSize;
using platform::NCWidgetDisplayMode;
using platform::RunLoop;

namespace {

TEST(Lifecycle, LoadingBuildsTheWidgetInOrder) {
    WidgetStage stage;
    stage.viewer.change([](platform::SimulatedViewerState& state) {
        state.texts = {
            {"home_USEDRAM", "RAM usata"}, {"home_DATASENT", "Inviati"}, {"home_USEDCPU", "CPU usata"}};
    });
    stage.controller->view();
    EXPECT_EQ(stage.controller->usedRAMTitleLabel->text(), "RAM usata");
    EXPECT_EQ(stage.controller->dataSentNETWORKTitleLabel->text(), "Inviati");
    EXPECT_EQ(stage.controller->inactiveCPUTitleLabel->text(), platform::NSLocalizedString("home_INACTIVE"));
    EXPECT_EQ(stage.controller->cpuChartView()->hostingController()->rootView()->title, "CPU usata");
    EXPECT_EQ(stage.controller->freeRAMLabel->text(), ""); // the first reports are still on their way
    EXPECT_EQ(stage.loop.queue.waiting(), 3U);
    EXPECT_EQ(RunLoop::main().timers().size(), 2U);
    EXPECT_EQ(stage.context->widgetLargestAvailableDisplayMode(), NCWidgetDisplayMode::expanded);
    EXPECT_TRUE(stage.controller->releasableSTORAGEStackView->isHidden()); // no report has asked to show it
    EXPECT_EQ(stage.controller->childViewControllers().size(), 3U);
}

TEST(Lifecycle, ChartsArePinnedIntoTheirPlaceholders) {
    WidgetStage stage;
    stage.load();
    for (const Section& section : sections) {
        if (!section.chart) {
            continue;
        }
        const auto& placeholder = (*stage.controller).*section.chart->view;
        placeholder->setFrame({{50, 60}, {100, 113}});
        placeholder->layoutIfNeeded();
        const auto& chart = ((*stage.controller).*section.chart->chart)();
        EXPECT_EQ(chart->frame(), (platform::CGRect{{0, 5}, {100, 100}})) << section.chart->name;
        EXPECT_EQ(chart->subviews().front()->frame(), (platform::CGRect{{0, 0}, {100, 100}}));
    }
}

/// Without a translation a text is its key, so the keys show.
TEST(Lifecycle, CaptionsAndRingsAreThoseOfTheDesign) {
    WidgetStage stage;
    stage.viewer.change([](platform::SimulatedViewerState& state) {
        for (const char* key : {"TOTALSPACE", "USEDSPACE", "FREESPACE", "RELEASABLESPACE", "USEDRAM", "FREE",
                                "USER", "SYSTEM", "INACTIVE", "DATASENT", "DATARECEIVED", "USEDCPU"}) {
            state.texts.emplace(std::string("home_") + key, key);
        }
    });
    stage.load();
    std::string captions;
    for (const Section& section : sections) {
        for (const SectionRow& row : section.rows) {
            captions += ((*stage.controller).*row.caption.label)->text() + " ";
        }
    }
    EXPECT_EQ(captions, "USEDRAM FREE USEDSPACE FREESPACE TOTALSPACE RELEASABLESPACE USER SYSTEM INACTIVE "
                        "DATARECEIVED DATASENT ");
    const char* const titles[] = {"USEDRAM", "USEDSPACE", "USEDCPU"};
    for (std::size_t i = 0; i < std::size(titles); ++i) {
        const ArcChartView* const chart = chartOf(*stage.controller, sections[i]);
        ASSERT_NE(chart, nullptr);
        EXPECT_EQ(chart->title, titles[i]);
        EXPECT_DOUBLE_EQ(chart->startAngle.radians, 2.356194490192345); // lower left
        EXPECT_DOUBLE_EQ(chart->endAngle.radians, 0.7853981633974483);  // lower right
        EXPECT_FALSE(chart->clockwise);
        EXPECT_EQ(chart->outerRingLineWidth, 2);
        EXPECT_EQ(chart->outerRingColor, platform::UIColor::secondaryLabelColor());
        EXPECT_EQ(chart->outerRingOpacity, 0.3);
        EXPECT_EQ(chart->innerRingLineWidth, 10);
        EXPECT_EQ(chart->titleColor, platform::UIColor::labelColor());
        EXPECT_EQ(chart->titleTopPadding, 8);
    }
}

TEST(Lifecycle, DisplayModesSetThePreferredSize) {
    WidgetStage stage;
    auto& controller = *stage.controller;
    controller.widgetActiveDisplayModeDidChange(NCWidgetDisplayMode::expanded, CGSize{320, 500});
    EXPECT_EQ(controller.preferredContentSize(), (CGSize{320, 360}));
    controller.widgetActiveDisplayModeDidChange(static_cast<NCWidgetDisplayMode>(2), CGSize{1, 1});
    EXPECT_EQ(controller.preferredContentSize(), (CGSize{320, 360}));
    controller.widgetActiveDisplayModeDidChange(NCWidgetDisplayMode::compact, CGSize{320, 110});
    EXPECT_EQ(controller.preferredContentSize(), (CGSize{320, 110}));
    int answers = 0; // even before the view is loaded
    controller.widgetPerformUpdateWithCompletionHandler([&](platform::NCUpdateResult result) {
        answers += result == platform::NCUpdateResult::newData ? 1 : 100;
    });
    EXPECT_EQ(answers, 1);
    EXPECT_FALSE(controller.isViewLoaded());
}

TEST(Lifecycle, AManualRefreshReplacesTheOneReportTimer) {
    WidgetStage stage;
    stage.load();
    EXPECT_EQ(stage.controller->refreshTime()->timeInterval(), 2.0);
    const auto first = stage.controller->refreshTime();
    stage.setStore(storedText("refreshSeconds", "5"));
    stage.controller->manualInfoRefresh(nullptr);
    stage.setStore(storedText("refreshSeconds", "0.5"));
    stage.loop.clock.pass(0.9); // a press comes between two turns
    stage.controller->manualInfoRefresh(&stage);
    EXPECT_EQ(stage.controller->refreshTime()->fireDate(),
              stage.loop.clock.now() + std::chrono::milliseconds(500));
    EXPECT_FALSE(first->isValid());
    EXPECT_EQ(stage.loop.queue.waiting(), 6U);
    EXPECT_EQ(stage.controller->refreshTime()->timeInterval(), 0.5);
    EXPECT_EQ(RunLoop::main().timers().size(), 2U); // it and the network's
}

TEST(Lifecycle, TheTimersKeepTheControllerAlive) {
    WidgetStage stage;
    stage.load();
    const std::weak_ptr<TEReportTableViewController> weak = stage.controller;
    stage.controller.reset();
    EXPECT_FALSE(weak.expired());
    RunLoop::main().clear();
    EXPECT_TRUE(weak.expired());
}

TEST(Lifecycle, WithoutAnOutletTheWidgetStops) {
    WidgetStage stage(false);
    auto bare = std::make_shared<TEReportTableViewController>("Report", nullptr);
    EXPECT_DEATH(bare->view(), "nothing to the outlet totalSTORAGETitleLabel");
    stage.load(); // and without a context it loads and asks for nothing
    EXPECT_EQ(stage.context->widgetLargestAvailableDisplayMode(), NCWidgetDisplayMode::compact);
    stage.controller->usedRAMLabel.reset();
    EXPECT_DEATH(stage.advance(2), "nothing to the outlet usedRAMLabel");
}

TEST(Actions, OpenTheirLinksWhateverTheSender) {
    WidgetStage stage;
    auto& controller = *stage.controller;
    controller.cleanRam(nullptr);
    EXPECT_EQ(actionCaptionKey(sections.front()), "host_CLEANRAM");
    stage.setStore(storedFlag("preventCleanRAMFromWidget"));
    EXPECT_EQ(actionCaptionKey(sections.front()), "host_SHOWRAM")
        << "it must not promise what it does not do";
    controller.cleanRam(&stage);
    controller.openApp(&stage);
    controller.showCpuChart(nullptr);
    const std::vector<std::string> links{"vantor://action?cleanRam", "vantor://action?showRam",
                                         "vantor://action?showStorage", "vantor://action?showCpu"};
    EXPECT_EQ(stage.context->opened, links);
    EXPECT_FALSE(stage.context->hadCompletionHandler);
}

TEST(Actions, WithoutAHostAreSilentAndDoNotEvenReadTheStore) {
    int storeReads = 0;
    WidgetStage stage(false, {}, [&] { ++storeReads; });
    stage.controller->cleanRam(nullptr);
    stage.controller->openApp(nullptr);
    EXPECT_EQ(storeReads, 0);
}

} // namespace
