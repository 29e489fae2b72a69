// SPDX-License-Identifier: MIT
#include "HandTurnedQueue.hpp"
#include "Output.hpp"
#include "SimulatedStore.hpp"
#include "charts/Arc.hpp"
#include "charts/ArcChartView.hpp"
#include "charts/LevelColor.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace vantor;
using namespace vantor::tests;
using platform::StrokeLayer;
using platform::TextLayer;
using platform::UIColor;

namespace {

constexpr double pi = std::numbers::pi;

class ArcChart : public ::testing::Test {
protected:
    void hold(const std::string& entries) {
        m_viewer.change([&](platform::SimulatedViewerState& state) { state.suite = storeHolding(entries); });
    }
    HandTurnedClock clock;

private:
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Viewer> m_scope{m_viewer};
};

TEST_F(ArcChart, TruncatesForTheColourAndRoundsForTheText) {
    ArcChartViewModel model;
    EXPECT_TRUE(model.innerRingColor() == UIColor::systemGreenColor());
    const std::pair<double, UIColor> levels[] = {
        {0.5, UIColor::systemGreenColor()},
        {0.51, UIColor::systemYellowColor()},
        {0.57, UIColor::systemYellowColor()},
        {0.675, UIColor::systemYellowColor()},
        {0.68, levelOrange()},
        {0.835, levelOrange()},
        {0.84, UIColor::systemRedColor()},
        {1.2, UIColor::systemRedColor()},
        {-0.17, levelOrange()},
        {-0.16, UIColor::systemRedColor()},
        {-0.51, UIColor::systemGreenColor()},
    };
    for (const auto& [value, color] : levels) {
        model.setProgress(value);
        EXPECT_EQ(model.progress(), std::abs(value));
        EXPECT_TRUE(model.innerRingColor() == color) << value;
    }
    EXPECT_EQ(percentText(0.835), "84%");
    EXPECT_EQ(percentText(0.0), "0%");
    EXPECT_EQ(percentText(0.125), "12%"); // a tie goes to the even number
    EXPECT_EQ(percentText(-std::nan("")), "nan%");
    EXPECT_EQ(percentText(1.2), "120%");
}

TEST_F(ArcChart, KeepsItsColourForNoNumberAndStopsAtLevelsThatDoNotFit) {
    ArcChartViewModel model;
    model.setProgress(0.9);
    model.setProgress(std::nan(""));
    EXPECT_TRUE(std::isnan(model.progress()));
    EXPECT_TRUE(model.innerRingColor() == UIColor::systemRedColor());
    for (const double huge : {1e300, -HUGE_VAL, 92233720368547758.08}) {
        EXPECT_DEATH(model.setProgress(huge), "level of a ring does not fit") << huge;
    }
    model.setProgress(92233720368547744.0); // the largest that does
}

TEST_F(ArcChart, TheUsersColourWinsAndClearIsNone) {
    hold(storedArchive("rgb-blue"));
    const UIColor blue = UIColor::colorWithRed(0.25, 0.5, 0.75, 1);
    ArcChartViewModel model;
    EXPECT_TRUE(model.innerRingColor() == blue);
    model.setProgress(std::nan(""));
    EXPECT_TRUE(model.innerRingColor() == blue);
    hold(storedArchive("gray-clear-unnamed"));
    model.setProgress(0.7);
    EXPECT_TRUE(model.innerRingColor() == levelOrange());
    hold(storedArchive("rgb-blue"));
    model.setProgress(0.7);
    EXPECT_TRUE(model.innerRingColor() == blue);

    hold(storedColor(garbage));
    const std::string log = logOf([] { ArcChartViewModel().setProgress(0.1); });
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2);
    hold(storedArchive("root-string"));
    EXPECT_DEATH(model.setProgress(0.1), "holds no colour");
}

TEST_F(ArcChart, AnnouncesEachChangeBeforeItIsMade) {
    ArcChartViewModel model;
    std::vector<double> seen;
    auto observation = model.observe([&] { seen.push_back(model.progress()); });
    model.setProgress(0.4);
    EXPECT_EQ(seen, (std::vector{0.0, 0.4})); // before the fraction, and before the colour
    observation.reset();
    model.setProgress(0.5);
    EXPECT_EQ(seen.size(), 2U);
}

TEST_F(ArcChart, DrawsFourLayersOfWhichOnlyTheRingMoves) {
    ArcChartView view{.arcChartViewModel = std::make_shared<ArcChartViewModel>(),
                      .startAngle = {3 * pi / 4},
                      .endAngle = {pi / 4},
                      .clockwise = false,
                      .outerRingLineWidth = 2,
                      .outerRingOpacity = 0.3,
                      .innerRingLineWidth = 10,
                      .title = "RAM",
                      .titleTopPadding = 8};
    view.arcChartViewModel->setProgress(0.5);
    const platform::CGRect wide{{0, 0}, {160, 100}};
    clock.advance(0.5);
    const platform::Layers layers = view.body(wide, clock.now());
    ASSERT_EQ(layers.size(), 4U);

    const auto& track = std::get<StrokeLayer>(layers[0]);
    EXPECT_EQ(track.opacity, 0.3);
    EXPECT_EQ(track.lineWidth, 2);
    const platform::ArcSegment& arc = track.path.arcs.at(0);
    EXPECT_EQ(arc.center, (platform::CGPoint{80, 50}));
    EXPECT_EQ(arc.radius, 50); // the square that fits, not the wide rectangle

    const auto& ring = std::get<StrokeLayer>(layers[1]);
    EXPECT_EQ(ring.lineWidth, 10);
    EXPECT_EQ(ring.lineCap, platform::LineCap::round);
    const auto degrees = [](const StrokeLayer& layer) {
        return layer.path.arcs.at(0).endAngle.radians * 180 / pi;
    };
    EXPECT_NEAR(degrees(ring), 135 + 0.25 * 270, 1e-9); // half-way to its half

    EXPECT_EQ(std::get<TextLayer>(layers[2]).text, "50%"); // the number does not wait for the ring
    const auto& caption = std::get<TextLayer>(layers[3]);
    EXPECT_EQ(caption.text, "RAM");
    EXPECT_EQ(caption.frame, (platform::CGRect{{30, 93}, {100, 15}})); // ends 8 points below the square
    EXPECT_EQ(caption.fontSize, 11);
    EXPECT_EQ(caption.minimumScaleFactor, 0.6);

    clock.advance(0.5);
    EXPECT_NEAR(degrees(std::get<StrokeLayer>(view.body(wide, clock.now())[1])), 270, 1e-9);
    view.arcChartViewModel->setProgress(0);
    clock.advance(1);
    EXPECT_TRUE(std::get<StrokeLayer>(view.body(wide, clock.now())[1]).path.arcs.empty());
    EXPECT_EQ(ArcChartStyle{}.body({}, wide).size(), 4U); // indeterminate: fraction 0
}

TEST(Arc, UsesHalfTheWidthWhateverTheHeight) {
    const Arc arc{{0}, {1}, true};
    const platform::ArcSegment segment = arc.path({{10, 20}, {100, 40}}).arcs.at(0);
    EXPECT_EQ(segment, (platform::ArcSegment{{60, 40}, 50, {0}, {1}, true}));
}

} // namespace
