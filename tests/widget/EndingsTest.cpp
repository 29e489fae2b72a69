// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "TestTree.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <functional>
#include <optional>
#include <random>
#include <vector>

namespace vantor::hosts::widget {
namespace {

/// A window that is ended in the middle of whatever it does.
class Endings : public ::testing::Test {
protected:
    Endings() {
        tests::putDemoInPlace();
        qputenv("DISPLAY", ":test"); // links are looked up
    }

    std::string script(const char* name, const std::string& text) {
        const std::string path = m_tree.write(name, "#!/bin/sh\n" + text + "\n").string();
        ::chmod(path.c_str(), 0700);
        return path;
    }
    unsigned upTo(unsigned most) { return std::uniform_int_distribution<unsigned>(0, most)(m_chance); }

    Options anyOptions() {
        Options options;
        options.expanded = upTo(1) == 0;
        options.onTop = upTo(1) == 0;
        options.frameless = upTo(1) == 0;
        return options;
    }

    QWidget& somewhere() {
        const auto places = m_window->findChildren<QAbstractButton*>();
        const unsigned place = upTo(static_cast<unsigned>(places.size()));
        return place < places.size() ? static_cast<QWidget&>(*places[place]) : m_window->card();
    }
    void mouse(QWidget& at, QEvent::Type type, const QPoint& position) {
        QMouseEvent event(type, position, at.mapToGlobal(position),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&at, &event);
    }
    void key(int code, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QWidget* const at = QApplication::activePopupWidget() != nullptr ? QApplication::activePopupWidget()
                            : m_window->focusWidget() != nullptr         ? m_window->focusWidget()
                                                                         : &*m_window;
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, with);
            QApplication::sendEvent(at, &event);
        }
    }

    void act() {
        const std::vector<std::function<void()>> deeds{
            [this] { // a click, or one that is still held down
                QWidget& at = somewhere();
                mouse(at, QEvent::MouseButtonPress, at.rect().center());
                if (upTo(3) > 0) {
                    mouse(at, QEvent::MouseButtonRelease, at.rect().center());
                }
            },
            [this] { // a drag
                QWidget& at = m_window->card();
                mouse(at, QEvent::MouseButtonPress, {3, 50});
                mouse(at, QEvent::MouseMove, {40, 80});
            },
            [this] {
                key(Qt::Key_Tab);
                key(Qt::Key_Space);
            },
            [this] { key(Qt::Key_F5); },
            [this] { key(Qt::Key_F10, Qt::ShiftModifier); }, // the menu
            [this] {
                key(Qt::Key_Down);
                key(Qt::Key_Return);
            },
            [this] { m_window->card().displayModeButton().click(); },
            [this] { m_window->setVisible(!m_window->isVisible()); },
            [this] { m_window->heed(anyOptions()); },
            [this] { m_window->close(); },
        };
        deeds[upTo(static_cast<unsigned>(deeds.size()) - 1)]();
    }

    tests::TestTree m_tree;
    std::mt19937 m_chance{20261123}; // the same run every time
    std::optional<WidgetWindow> m_window;
};

/// The programs that links are opened with answer at once, after a while, or never.
TEST_F(Endings, AtAnyMomentAreInPeace) {
    const std::string quick = script("quick", "exit 0");
    const std::string slow = script("slow", "sleep 0.05");
    const std::string never =
        script("never", "while [ -d " + m_tree.root().string() + " ]; do sleep 0.2; done");
    m_tree.write("v.desktop", "[Desktop Entry]\nExec=v\nMimeType=x-scheme-handler/vantor\n");
    const common::LinkHandlers handlers{{}, {m_tree.root().string()}};
    constexpr int rounds = 300;
    for (int round = 0; round < rounds; ++round) {
        const std::vector<WidgetHost::Programs> programs{
            {quick, handlers}, {slow, handlers}, {never, handlers}, {quick, {}}};
        m_window.emplace(anyOptions(), programs[upTo(3)]);
        m_window->start();
        for (unsigned deed = upTo(4); deed > 0; --deed) {
            act();
            for (unsigned turn = upTo(6); turn > 0; --turn) {
                QApplication::processEvents();
            }
        }
        // Some are let live until something comes of itself: a frame of an animation, an answer, a report.
        for (unsigned wait = upTo(7) == 0 ? upTo(40) : 0; wait > 0; --wait) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
        }
        m_window.reset();
        platform::RunLoop::main().turn(std::chrono::steady_clock::now()); // what came too late
        QApplication::processEvents();
    }
}

} // namespace
} // namespace vantor::hosts::widget
