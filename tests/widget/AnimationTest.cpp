// SPDX-License-Identifier: MIT
#include "WidgetStage.hpp"
#include "hosts/widget/OutletBinding.hpp"
#include "hosts/widget/WidgetCard.hpp"

#include <gtest/gtest.h>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

using namespace std::chrono_literals;

/// The rings of a card on a clock that only the test moves; the animator's own timer never fires here.
class Animation : public ::testing::Test {
protected:
    Animation() {
        m_stage.load();
        m_card = std::make_unique<WidgetCard>(m_stage.controller);
        m_card->setTheme(Theme::of(platform::Appearance::light, 1, {}));
        m_card->setContentSize({400, 360});
        m_card->setAttribute(Qt::WA_DontShowOnScreen);
        m_card->show();
        for (const char* name : {"progressRAMView", "progressSTORAGEView", "progressCPUView"}) {
            m_rings.push_back(dynamic_cast<RingView*>(m_card->findChild<QWidget*>(QLatin1String(name))));
        }
        m_animator = std::make_unique<RingAnimator>(m_rings, [this] { return m_stage.loop.clock.now(); });
        m_stage.advance(2.2); // past the first animation, and long before the next report
        m_animator->settle();
    }

    void send(double fraction) { m_stage.model(m_stage.controller->ramChartView()).setProgress(fraction); }
    double end() {
        const auto& ring = std::get<platform::StrokeLayer>(m_rings.front()->layers().at(1));
        return ring.path.arcs.empty() ? 0 : ring.path.arcs.front().endAngle.radians;
    }

    tests::WidgetStage m_stage;
    std::unique_ptr<WidgetCard> m_card;
    std::vector<RingView*> m_rings;
    std::unique_ptr<RingAnimator> m_animator;
};

TEST_F(Animation, FramesComeAsOftenAsTheFastestEndNeeds) {
    send(0.76); // from 0.75: two pixels within the second
    m_animator->start();
    ASSERT_TRUE(m_animator->isRunning());
    EXPECT_GT(m_animator->interval(), 300ms);
    send(0.1);
    m_animator->start();
    EXPECT_EQ(m_animator->interval(), 67ms); // never faster than the eye
}

TEST_F(Animation, TheEndIsOnItsWayAndThenThere) {
    const double before = end();
    send(0.25);
    m_animator->start();
    EXPECT_NEAR(end(), before, 1e-9);
    EXPECT_EQ(m_rings.front()->percentage(), "25%"); // the number does not wait
    m_stage.advance(0.5);
    m_animator->start();
    const double half = end();
    m_stage.advance(0.6);
    m_animator->start();
    EXPECT_NEAR(half, (before + end()) / 2, 1e-6);
    EXPECT_FALSE(m_animator->isRunning());
}

TEST_F(Animation, NothingMovesForLessThanHalfAPixel) {
    send(0.7505);
    m_animator->start();
    EXPECT_FALSE(m_animator->isRunning());
    m_animator->settle();
}

TEST_F(Animation, ReducedMotionShowsTheEndAtOnce) {
    m_animator->setMotion(false);
    const double before = end();
    send(0.25);
    m_animator->start();
    EXPECT_FALSE(m_animator->isRunning());
    EXPECT_LT(end(), before - 1);
}

} // namespace

} // namespace vantor::hosts::widget
