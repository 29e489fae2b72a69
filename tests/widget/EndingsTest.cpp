// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "TestTree.hpp"
#include "hosts/common/Signals.hpp"
#include "hosts/qt/ToolkitSetup.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <chrono>
#include <csignal>
#include <functional>
#include <optional>
#include <random>
#include <vector>

namespace vantor::hosts::widget {
namespace {

constexpr std::chrono::seconds patience{20};

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

    /// A window that lives for so long and is pressed meanwhile, as in the program: the loop runs, what ends
    /// it comes in between, and then the window goes.
    void liveFor(std::chrono::milliseconds time, const WidgetHost::Programs& programs) {
        m_window.emplace(anyOptions(), programs);
        m_window->start();
        QObject round; // what was to happen after the end does not
        const auto after = [this, &round](std::chrono::milliseconds wait, const std::function<void()>& deed) {
            QTimer::singleShot(wait, Qt::PreciseTimer, &round, [this, deed] {
                if (m_window) { // others that are due in the same turn come still
                    deed();
                }
            });
        };
        for (unsigned deed = upTo(5); deed > 0; --deed) {
            after(std::chrono::milliseconds(upTo(static_cast<unsigned>(time.count()))), [this] { act(); });
        }
        after(time, anyEnd());
        after(patience, [] {
            ADD_FAILURE() << "nothing ends it";
            QApplication::exit();
        });
        QApplication::exec();
        const bool wasSeen = m_window && m_window->presence().isSeen();
        m_window.reset();
        EXPECT_TRUE(!wasSeen || rememberedWindow()) << "what it was like is not kept";
    }

    tests::TestTree m_tree;
    std::mt19937 m_chance{20261123}; // the same run every time
    std::optional<WidgetWindow> m_window;
    const common::Signals m_signals{{SIGTERM}, common::Signals::Again::taken};

private:
    std::function<void()> anyEnd() {
        const std::vector<std::function<void()>> ends{
            [] { ::raise(SIGTERM); },
            [this] { m_window->menu().actions().back()->trigger(); }, // to quit
            [this] { m_window->close(); },
            [] { QApplication::exit(); },
            [this] { // without the loop having ended first
                m_window.reset();
                QApplication::exit();
            },
        };
        const unsigned end = upTo(static_cast<unsigned>(ends.size()) - 1);
        if (end == 0) {
            hearSignal();
        }
        return ends[end];
    }
    /// A signal is heard once, as the program needs it.
    void hearSignal() {
        if (m_signals.take().empty() && m_hears) {
            return;
        }
        m_hears = true;
        qt::quitWhenReadable(m_signals.number());
    }

    bool m_hears = false;
};

/// The programs that links are opened with answer at once, after a while, or never.
TEST_F(Endings, AtAnyMomentAreInPeace) {
    const std::string quick = script("quick", "exit 0");
    const std::string slow = script("slow", "sleep 0.05");
    const std::string never =
        script("never", "while [ -d " + m_tree.root().string() + " ]; do sleep 0.2; done");
    m_tree.write("v.desktop", "[Desktop Entry]\nExec=v\nMimeType=x-scheme-handler/vantor\n");
    const common::LinkHandlers handlers{{}, {m_tree.root().string()}};
    const std::vector<WidgetHost::Programs> programs{
        {quick, handlers}, {slow, handlers}, {never, handlers}, {quick, {}}};
    constexpr int rounds = 300;
    for (int round = 0; round < rounds; ++round) {
        // Most end while they begin; some are let live until something comes of itself: a frame of an
        // animation, an answer, a report.
        const unsigned longest = round % 6 == 0 ? 400 : 25;
        liveFor(std::chrono::milliseconds(upTo(longest)), programs[upTo(3)]);
        platform::RunLoop::main().turn(std::chrono::steady_clock::now()); // what came too late
        QApplication::processEvents();
    }
}

} // namespace
} // namespace vantor::hosts::widget
