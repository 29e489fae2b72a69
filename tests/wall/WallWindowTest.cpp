// SPDX-License-Identifier: MIT
#include "hosts/widget/WallWindow.hpp"

#include "DemoInPlace.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

namespace vantor::hosts::widget {

namespace {

/// A machine takes the wall's place and gives it back; the source rests meanwhile, and while nobody looks.
TEST(WallWindow, GivesItsPlaceToAMachineAndTakesItBack) {
    tests::putDemoInPlace();
    Options options;
    options.fleet.demo = 41;
    static auto& fleet = *new common::FleetHost(options.fleet); // as in the program: workers may still ask
    ASSERT_TRUE(fleet.open("test"));
    WallWindow window(options, fleet);
    window.start();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.wall().table().known() == 41; }));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    ASSERT_NE(window.page(), nullptr);
    EXPECT_FALSE(window.wall().isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(window.page(), nullptr);
    EXPECT_TRUE(window.wall().isVisible());
    EXPECT_TRUE(window.wall().view().hasFocus());
    EXPECT_TRUE(window.wall().view().cursor().has_value());
}

} // namespace

} // namespace vantor::hosts::widget
