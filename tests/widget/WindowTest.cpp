// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "Eventually.hpp"
#include "hosts/qt/LayerShell.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QScreen>
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

/// Counts what is laid out.
class Layouts : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        count += event->type() == QEvent::Resize || event->type() == QEvent::Move ? 1 : 0;
        return QObject::eventFilter(object, event);
    }
};

TEST_F(Window, GlidesFromOneHeightToTheOtherAndBackToItsPlace) {
    m_window->show();
    ASSERT_TRUE(eventually([this] { return hasFigures(); }));
    auto& toggle = *m_window->findChild<QAbstractButton*>(QStringLiteral("displayModeButton"));
    const int frame = m_window->height() - m_window->card().height();
    const auto glideTo = [&](int height) {
        const int before = m_window->card().height();
        toggle.click();
        EXPECT_EQ(m_window->card().height(), before) << "not at once";
        EXPECT_TRUE(eventually([&] {
            EXPECT_EQ(m_window->height() - m_window->card().height(), frame);
            return !m_window->isGliding();
        }));
        EXPECT_EQ(m_window->card().height(), height);
    };
    glideTo(110);
    EXPECT_FALSE(m_window->findChild<QLabel*>(QStringLiteral("userCPULabel"))->isVisible());
    const QPoint low(100, m_window->screen()->availableGeometry().bottom() - m_window->height());
    m_window->move(low);
    glideTo(360);
    EXPECT_LT(m_window->pos().y(), low.y()) << "it is on the screen as a whole";

    Layouts layouts;
    for (QWidget* inside :
         m_window->findChild<QWidget*>(QStringLiteral("details"))->findChildren<QWidget*>()) {
        inside->installEventFilter(&layouts);
    }
    toggle.click();
    toggle.click(); // and back again in the middle
    EXPECT_TRUE(eventually([this] { return !m_window->isGliding(); }));
    glideTo(110);
    EXPECT_EQ(m_window->pos(), low);
    EXPECT_EQ(layouts.count, 0) << "nothing in it moves";
}

TEST_F(Window, JumpsWhereMotionIsNotWanted) {
    m_window->show();
    ASSERT_TRUE(eventually([this] { return m_window->presence().isSeen(); }));
    m_window->card().animator().setMotion(false);
    for (const int height : {110, 360}) {
        m_window->findChild<QAbstractButton*>(QStringLiteral("displayModeButton"))->click();
        EXPECT_EQ(m_window->card().height(), height);
    }
}

/// As a session ends: nothing of the window is told of it. And what a later start asks for.
TEST_F(Window, IsKeptAsItChanges) {
    m_window->start();
    ASSERT_TRUE(eventually([this] { return m_window->presence().isSeen(); }));
    Options asked;
    asked.expanded = false;
    asked.onTop = true;
    m_window->heed(asked);
    EXPECT_TRUE(eventually([this] { return m_window->card().height() == 110; }));
    EXPECT_TRUE(m_window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(eventually([] {
        const std::optional<WindowState> state = rememberedWindow();
        return state && !state->expanded && state->onTop;
    }));
    m_window.reset();
    EXPECT_TRUE(WidgetWindow({}).windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    asked.onTop = false;
    asked.onDesktop = true; // instead of what is remembered
    EXPECT_FALSE(WidgetWindow(asked).windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST(Layers, AWindowStandsAtItsEdgesOrInTheMiddle) {
    const auto place = [](std::string_view anchor) {
        return qt::placeOnLayer({400, 360}, {1000, 700}, qt::edgesOf(anchor), 24);
    };
    EXPECT_EQ(place("top-right"), QPoint(576, 24));
    EXPECT_EQ(place("bottom-left"), QPoint(24, 316));
    EXPECT_EQ(place("bottom"), QPoint(300, 316));
    EXPECT_EQ(place("center"), QPoint(300, 170));
}

TEST_F(Window, ItsMenuOffersTheActions) {
    m_window->show();
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(5, 5), m_window->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&*m_window, &press);
    auto* const menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    ASSERT_GT(menu->actions().size(), 7);
    EXPECT_EQ(menu->actions().front()->text(), "Refresh");
    EXPECT_EQ(menu->parentWidget(), &*m_window) << "Wayland makes a popup of it only then";
    EXPECT_TRUE(menu->rect().contains(menu->actionGeometry(menu->actions().back())));
    menu->close();
}

} // namespace

} // namespace vantor::hosts::widget
