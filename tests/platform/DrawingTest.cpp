// SPDX-License-Identifier: MIT
#include "platform/drawing/Layer.hpp"
#include "platform/drawing/LinearAnimation.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace vantor::platform;

namespace {

constexpr double pi = std::numbers::pi;

TEST(Path, TrimsAlongTheArcAndIsEmptyWhereNothingIsLeft) {
    Path ring;
    ring.addArc({50, 50}, 50, {0.75 * pi}, {0.25 * pi}, false);
    EXPECT_NEAR(ring.arcs[0].sweep(), 1.5 * pi, 1e-12);

    const Path half = ring.trimmed(0, 0.5);
    ASSERT_EQ(half.arcs.size(), 1U);
    EXPECT_DOUBLE_EQ(half.arcs[0].startAngle.radians, 0.75 * pi);
    EXPECT_NEAR(half.arcs[0].endAngle.radians, 1.5 * pi, 1e-12); // straight up
    EXPECT_NEAR(ring.trimmed(0, 7).arcs[0].endAngle.radians, 2.25 * pi, 1e-12);
    for (const double nothing : {0.0, -1.0, std::nan("")}) {
        EXPECT_TRUE(ring.trimmed(0, nothing).arcs.empty()) << nothing;
    }
    Path back;
    back.addArc({0, 0}, 1, {0}, {-0.5 * pi}, true);
    EXPECT_NEAR(back.arcs[0].sweep(), -0.5 * pi, 1e-12);
}

TEST(Color, ModelsAreNeverEqualAndNamedColoursFollowTheAppearance) {
    EXPECT_FALSE(UIColor::colorWithRed(0, 0, 0, 0) == UIColor::clearColor());
    EXPECT_TRUE(UIColor::colorWithWhite(0, 0) == UIColor::clearColor());
    EXPECT_EQ(UIColor::systemRedColor().resolved(Appearance::dark), (RGBA{1, 69 / 255.0, 58 / 255.0, 1}));
    EXPECT_FALSE(UIColor::systemGreenColor() ==
                 UIColor::colorWithRed(52 / 255.0, 199 / 255.0, 89 / 255.0, 1));
    EXPECT_FALSE(UIColor::named("fancyFutureColor").has_value());
    const UIColor wide = UIColor::colorWithRed(1.3, -0.2, std::nan(""), 2);
    EXPECT_DOUBLE_EQ(wide.red(), 1.3);
    EXPECT_EQ(wide.resolved(Appearance::light), (RGBA{1, 0, 0, 1}));
}

TEST(Animation, RunsAtConstantSpeedAndRetargetsFromWhatIsOnScreen) {
    const Instant start{std::chrono::hours(1)};
    const auto at = [&](int milliseconds) { return start + std::chrono::milliseconds(milliseconds); };
    LinearAnimation ring;
    ring.retarget(0.8, start, 1.0);
    EXPECT_DOUBLE_EQ(ring.valueAt(at(250)), 0.2);
    ring.retarget(0.0, at(500), 1.0);
    EXPECT_DOUBLE_EQ(ring.valueAt(at(500)), 0.4);
    ring.retarget(0.0, at(750), 1.0); // the same aim once more
    EXPECT_DOUBLE_EQ(ring.valueAt(at(1000)), 0.2);
    EXPECT_TRUE(ring.isRunningAt(at(1499)));
    EXPECT_FALSE(ring.isRunningAt(at(1500)));
    ring.retarget(std::nan(""), at(1500), 1.0);
    EXPECT_TRUE(std::isnan(ring.valueAt(at(1600))));
    EXPECT_FALSE(ring.isRunningAt(at(1600)));
    ring.retarget(0.5, at(1700), 1.0);
    EXPECT_DOUBLE_EQ(ring.valueAt(at(1700)), 0.5);
}

} // namespace
