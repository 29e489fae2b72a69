// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "Eventually.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <optional>

namespace vantor::hosts::widget {

using namespace qt;

namespace {

using tests::eventually;

class Window : public ::testing::Test {
protected:
    Window() {
        tests::putDemoInPlace();
        m_window.emplace(Options{});
    }
    bool hasFigures() {
        return m_window->findChild<QLabel*>(QStringLiteral("usedRAMLabel"))->text() != QStringLiteral("–");
    }
    std::optional<WidgetWindow> m_window;
};

TEST_F(Window, ShowsFiguresAtOnceAndRestsWhileHidden) {
    EXPECT_FALSE(hasFigures());
    m_window->show();
    ASSERT_TRUE(eventually([this] { return hasFigures(); }));
    EXPECT_TRUE(m_window->presence().isSeen());
    m_window->hide();
    ASSERT_TRUE(eventually([this] { return !m_window->presence().isSeen(); }));
    bool hasTurned = false;
    platform::RunLoop::main().post([&hasTurned] { hasTurned = true; }); // nobody is woken by it
    QApplication::processEvents();
    EXPECT_FALSE(hasTurned);
    EXPECT_FALSE(m_window->card().animator().isRunning());
}

TEST_F(Window, RestsBehindALockedScreen) {
    m_window->show();
    ASSERT_TRUE(eventually([this] { return m_window->presence().isSeen(); }));
    m_window->presence().setScreenLocked(true);
    EXPECT_FALSE(m_window->presence().isSeen());
    m_window->presence().setScreenLocked(false);
    EXPECT_TRUE(m_window->presence().isSeen());
}

TEST_F(Window, GoesFromOneHeightToTheOther) {
    m_window->show();
    EXPECT_EQ(m_window->card().height(), 360);
    m_window->findChild<QAbstractButton*>(QStringLiteral("displayModeButton"))->click();
    EXPECT_EQ(m_window->card().height(), 110);
    m_window->findChild<QAbstractButton*>(QStringLiteral("displayModeButton"))->click();
    EXPECT_EQ(m_window->card().height(), 360);
}

TEST_F(Window, ItsMenuOffersTheActions) {
    m_window->show();
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(5, 5), m_window->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&*m_window, &press);
    auto* const menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    ASSERT_GT(menu->actions().size(), 7);
    EXPECT_EQ(menu->actions().front()->text(), "Refresh");
    EXPECT_TRUE(menu->rect().contains(menu->actionGeometry(menu->actions().back())));
    menu->close();
}

} // namespace

} // namespace vantor::hosts::widget
