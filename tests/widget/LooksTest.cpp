// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "PictureComparison.hpp"
#include "TestTree.hpp"
#include "WidgetStage.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/widget/ReportCard.hpp"
#include "hosts/widget/Snapshot.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <clocale>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

struct Look {
    const char* name;
    const char* locale;
    AppearanceChoice appearance;
    bool expanded;
    double scale;
};

constexpr Look looks[] = {
    {"en_light_expanded_1x", "en_US", AppearanceChoice::light, true, 1},
    {"en_dark_expanded_1_5x", "en_US", AppearanceChoice::dark, true, 1.5},
    {"en_light_compact_2x", "en_US", AppearanceChoice::light, false, 2},
    {"en_dark_compact_1x", "en_US", AppearanceChoice::dark, false, 1},
    {"de_light_expanded_1_5x", "de_DE", AppearanceChoice::light, true, 1.5},
    {"de_dark_compact_2x", "de_DE", AppearanceChoice::dark, false, 2},
    {"ja_dark_expanded_1x", "ja_JP", AppearanceChoice::dark, true, 1},
    {"ja_light_compact_1_5x", "ja_JP", AppearanceChoice::light, false, 1.5},
    {"ar_light_expanded_2x", "ar_EG", AppearanceChoice::light, true, 2},
    {"ar_dark_compact_1x", "ar_EG", AppearanceChoice::dark, false, 1},
};

class Looks : public ::testing::TestWithParam<Look> {};

/// One look in one language, in a process of its own.
TEST_P(Looks, AreAsInTheDocuments) {
    const Look& look = GetParam();
    const std::string locale = look.locale + std::string(".UTF-8");
    qputenv("LC_ALL", locale.c_str());
    if (std::setlocale(LC_ALL, "") == nullptr) {
        GTEST_SKIP() << "the locale " << locale << " is not generated on this machine";
    }
    tests::putDemoInPlace();
    QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const tests::TestTree folder;
    Options options;
    options.snapshot = (folder.root() / "look.png").string();
    options.expanded = look.expanded;
    options.appearance = look.appearance;
    options.scale = look.scale;
    options.demo = true;
    ASSERT_EQ(writeSnapshot(options), 0);
    tests::expectAsInDocuments(QImage(QString::fromStdString(*options.snapshot)),
                               "looks/" + std::string(look.name) + ".png");
}

INSTANTIATE_TEST_SUITE_P(All, Looks, ::testing::ValuesIn(looks),
                         [](const auto& each) { return std::string(each.param.name); });

/// All three rings at one fraction.
void setLevel(platform::SimulatedState& state, double fraction) {
    constexpr double pages = 262144; // of 4 GiB
    constexpr double bytes = 128e9;
    state.virtualMemory.free_count = static_cast<std::uint32_t>(std::lround((1 - fraction) * pages));
    const auto available = static_cast<std::int64_t>(std::llround((1 - fraction) * bytes));
    state.volume = platform::VolumeCapacities{static_cast<std::int64_t>(bytes), available, available};
    state.cpuLoad.user += static_cast<std::uint32_t>(std::lround(fraction * 100));
    state.cpuLoad.idle += 100 - static_cast<std::uint32_t>(std::lround(fraction * 100));
}

/// The bands of the level colours from their edges, and a colour of one's own, light beside dark.
TEST(LookOfTheLevels, IsAsInTheDocuments) {
    tests::WidgetStage stage;
    stage.load();
    ReportCard card(stage.controller);
    card.setExpanded(false);
    card.setContentSize({400, 110});
    card.setAttribute(Qt::WA_DontShowOnScreen);
    card.show();
    const double levels[] = {0, 0.5, 0.67, 0.83, 0.84, 1, 0.67};
    QImage sheet(820, 120 * static_cast<int>(std::size(levels)), QImage::Format_RGB32);
    sheet.fill(Qt::gray);
    QPainter painter(&sheet);
    int top = 5;
    for (const double& level : levels) {
        if (&level == std::end(levels) - 1) {
            stage.setStore(tests::storedArchive("rgb-blue"));
        }
        stage.machine.change([&](platform::SimulatedState& state) { setLevel(state, level); });
        stage.advance(2);
        int left = 5;
        for (const auto appearance : {platform::Appearance::light, platform::Appearance::dark}) {
            card.setTheme(Theme::of(appearance, 1, {}));
            card.setContentSize({400, 110});
            card.flush();
            card.animator().settle();
            card.render(&painter, QPoint(left, top), {}, QWidget::DrawChildren);
            left += 410;
        }
        top += 120;
    }
    painter.end();
    tests::expectAsInDocuments(sheet, "looks/levels.png");
}

} // namespace

} // namespace vantor::hosts::widget
