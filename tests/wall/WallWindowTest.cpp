// SPDX-License-Identifier: MIT
#include "hosts/widget/WallWindow.hpp"

#include "DemoInPlace.hpp"
#include "platform/core/MakeForEver.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QTest>

namespace vantor::hosts::widget {

namespace {

/// A machine takes the wall's place and gives it back; the source rests meanwhile, and while nobody looks.
TEST(WallWindow, GivesItsPlaceToAMachineAndTakesItBack) {
    tests::putDemoInPlace();
    Options options;
    options.fleet.demo = 41;
    auto& fleet =
        platform::makeForEver<common::FleetHost>(options.fleet); // as in the program: workers may still ask
    ASSERT_TRUE(fleet.open("test"));
    WallWindow window(options, fleet);
    window.start();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.wall().table().known() == 41; }));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    ASSERT_NE(window.page(), nullptr);
    ASSERT_NE(window.page()->host(), nullptr) << "a made-up machine has something to tell at once";
    const platform::FleetMachine& machine = *window.wall().table().rows().front().machine;
    const auto volume = platform::currentMachine().volumeCapacities(machine.volume);
    ASSERT_TRUE(volume);
    EXPECT_NEAR(1 - static_cast<double>(volume->available.value_or(0)) /
                        static_cast<double>(volume->total.value_or(1)),
                machine.figure(platform::FleetFigure::storage).value_or(-1), 0.001);
    ASSERT_TRUE(machine.downSince) << "the last figures of this one are pale, on the card's own ground";
    WidgetCard& card = window.page()->host()->card();
    QImage image(card.size(), QImage::Format_RGB32);
    image.fill(Qt::magenta);
    card.render(&image);
    const auto* const label = card.findChild<QLabel*>(QStringLiteral("usedRAMLabel"));
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(image.pixelColor(label->mapTo(&card, QPoint(1, 1))).name(), card.theme().card.name());
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
