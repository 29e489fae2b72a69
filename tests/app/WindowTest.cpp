// SPDX-License-Identifier: MIT
#include "AppStage.hpp"
#include "Eventually.hpp"
#include "TestTree.hpp"
#include "hosts/app/AppWindow.hpp"
#include "hosts/app/EndDialog.hpp"
#include "hosts/app/FreeUpRow.hpp"
#include "hosts/app/StorageWords.hpp"
#include "hosts/qt/PaintNow.hpp"
#include "platform/time/DispatchQueue.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <atomic>
#include <set>

namespace vantor::hosts::app {

namespace {

void press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers);
        QApplication::sendEvent(&widget, &event);
    }
}

using tests::eventually;

class Window : public ::testing::Test {
protected:
    void SetUp() override {
        tests::putWholeDemoInPlace();
        Options options;
        options.demo = true;
        m_window = std::make_unique<AppWindow>(options);
        m_window->heed({});
    }
    std::unique_ptr<AppWindow> m_window;
};

TEST_F(Window, LooksOnlyWhileItCanBeSeen) {
    AppContent& content = m_window->content();
    ASSERT_TRUE(eventually([&] { return content.samples() > 0; }));
    m_window->hide();
    QApplication::processEvents();
    const int before = content.samples();
    content.refresh(); // even what is asked for waits until somebody looks
    QApplication::processEvents();
    EXPECT_EQ(content.samples(), before);
    m_window->show();
    EXPECT_TRUE(eventually([&] { return content.samples() > before; }));
}

/// A later start, or a link.
TEST_F(Window, ShowsThePageThatIsAskedFor) {
    Options asked;
    asked.page = PageKind::processor;
    m_window->heed(asked);
    EXPECT_EQ(m_window->content().page(), PageKind::processor);
    m_window->heed({});
    EXPECT_EQ(m_window->content().page(), PageKind::processor);
}

/// Tab comes to all that can be pressed, and back to where it began.
TEST_F(Window, IsUsedByTheKeyboardAlone) {
    m_window->content().setPage(PageKind::settings);
    QApplication::processEvents();
    std::set<const QWidget*> reached;
    QWidget* widget = &m_window->content().sidebar().entry(PageKind::settings);
    for (int i = 0; i < 200; ++i) {
        widget = widget->nextInFocusChain();
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0) {
            reached.insert(widget);
        }
    }
    SettingsPane& pane = m_window->content().settings();
    for (const QWidget* const each :
         {static_cast<const QWidget*>(&pane.flag("isInactiveRAMHide")),
          static_cast<const QWidget*>(&pane.seconds()), static_cast<const QWidget*>(&pane.colorButton()),
          static_cast<const QWidget*>(&pane.automatic()), static_cast<const QWidget*>(&pane.resetButton())}) {
        EXPECT_TRUE(reached.contains(each)) << each->accessibleName().toStdString();
    }
    press(pane.flag("isInactiveRAMHide"), Qt::Key_Space);
    EXPECT_TRUE(pane.flag("isInactiveRAMHide").isChecked());
}

/// Says what comes back and what is lost, and ends nothing before the second press.
TEST_F(Window, EndsAnApplicationOnlyWhenThatIsConfirmed) {
    MemoryPane& pane = m_window->content().memory();
    ASSERT_TRUE(eventually([&] { return pane.list().model().rowCount() > 3; }));
    UseTree& tree = pane.list().tree();
    tree.setCurrentIndex(pane.list().model().index(0, 0));
    const std::string key = pane.list().model().rowAt(tree.currentIndex())->key;
    ASSERT_TRUE(tree.button().isVisible());
    press(tree, Qt::Key_Delete);
    auto* const sheet = m_window->findChild<Sheet*>();
    ASSERT_NE(sheet, nullptr);
    ASSERT_TRUE(eventually([&] { return sheet->action().isEnabled(); }));
    EXPECT_EQ(sheet->action().text(), QStringLiteral("End")); // no other question comes
    EXPECT_EQ(pane.list().model().rowAt(pane.list().model().index(0, 0))->key, key);
    sheet->action().click();
    EXPECT_TRUE(eventually([&] {
        const UseRow* const row = pane.list().model().rowAt(pane.list().model().index(0, 0));
        return row != nullptr && row->key != key;
    }));
}

/// The window that a link opens has its first look, which takes seconds, when the link is heeded.
TEST(FreeUpRow, DoesWhatALinkWantsOnceItHasLooked) {
    tests::putWholeDemoInPlace();
    const tests::TestTree state;
    qputenv("XDG_STATE_HOME", state.root().c_str());
    const auto isHeld = std::make_shared<std::atomic<bool>>(true);
    const auto now = std::make_shared<std::atomic<int>>(0);
    const Pace pace{[now] { return Pace::Moment(std::chrono::seconds(now->load())); },
                    [now, isHeld](std::chrono::milliseconds) {
                        platform::dispatch_will_wait(); // as after a tenth of a second
                        *now += *isHeld ? 0 : 1;
                    }};
    int freed = 0;
    FreeUpRow row([&freed] { ++freed; }, pace);
    row.lookOnce();
    row.runByLink();
    EXPECT_TRUE(tests::turnUntil([&] { return exists(state.root() / "vantor/freed-by-link"); }));
    (void)tests::turnUntil([turns = 0]() mutable { return ++turns > 3; });
    EXPECT_EQ(freed, 0);
    *isHeld = false;
    EXPECT_TRUE(tests::turnUntil([&] { return freed == 1 && row.isSettled(); }));
    row.runByLink(); // again within the minute
    const QString before = row.sentence().text();
    EXPECT_TRUE(tests::turnUntil([&] { return row.sentence().text() != before; }));
    EXPECT_EQ(freed, 1);
    qputenv("XDG_STATE_HOME", "/dev/null"); // where the time of the last one cannot be kept
    row.runByLink();
    EXPECT_TRUE(
        tests::turnUntil([&] { return row.sentence().text().contains(QStringLiteral("/dev/null")); }));
    EXPECT_EQ(freed, 1);
    qunsetenv("XDG_STATE_HOME");
}

/// The list that is shown is the list that goes.
TEST_F(Window, DeletesWhatWasListedAndSaysWhatItGave) {
    StoragePane& pane = m_window->content().storage();
    m_window->content().setPage(PageKind::storage);
    ASSERT_TRUE(eventually([&] { return pane.isCounted(); }));
    ASSERT_NE(pane.trashButton(), nullptr);
    Sidebar& sidebar = m_window->content().sidebar(); // Tab takes the page that is shown, the rows, the foot
    EXPECT_EQ(sidebar.entry(PageKind::memory).focusPolicy() & Qt::TabFocus, 0);
    EXPECT_NE(sidebar.entry(PageKind::storage).focusPolicy() & Qt::TabFocus, 0);
    const QWidget* next = pane.trashButton();
    for (int i = 0; i < 100 && next != &pane.releaseButton(); ++i) {
        next = next->nextInFocusChain();
        EXPECT_NE(next, pane.trashButton());
        EXPECT_FALSE(sidebar.isAncestorOf(next));
    }
    pane.trashButton()->click();
    ASSERT_TRUE(eventually([&] { return pane.sheet() != nullptr; }));
    EXPECT_NE(pane.sheet()->list().toPlainText().indexOf(QStringLiteral("manual.pdf")), -1);
    const QString before = pane.result().text();
    pane.sheet()->action().click();
    EXPECT_TRUE(eventually([&] { return pane.result().text() != before; }));
    EXPECT_NE(pane.result().text().indexOf(storageSize(3'100'000'000)), -1)
        << pane.result().text().toStdString();
}

/// The rings of other pages move along with those that are shown.
TEST(PaintNow, LeavesAloneWhatCannotBeSeen) {
    QWidget window;
    window.resize(200, 200);
    auto* const view = new QWidget(&window);
    view->setGeometry(0, 0, 50, 50);
    auto* const ring = new QWidget(view);
    ring->setGeometry(10, 10, 20, 20);
    window.show();
    QApplication::processEvents();
    int drawn = 0;
    const auto paint = [&] {
        return qt::paintNow(*ring, ring->rect(), [&drawn](QImage&, const QRect&) { ++drawn; });
    };
    ASSERT_TRUE(paint());
    ring->move(40, 10); // scrolled half out
    EXPECT_FALSE(paint());
    ring->move(10, 10);
    view->hide();
    EXPECT_FALSE(paint());
    EXPECT_EQ(drawn, 1);
}

} // namespace

} // namespace vantor::hosts::app
