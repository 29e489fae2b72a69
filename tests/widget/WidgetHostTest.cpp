// SPDX-License-Identifier: MIT
#include "hosts/widget/WidgetHost.hpp"

#include "Eventually.hpp"
#include "WidgetStage.hpp"
#include "hosts/qt/Buttons.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/MessageLine.hpp"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <map>
#include <optional>

namespace vantor::hosts::widget {

namespace {

using platform::NCWidgetDisplayMode;

/// The window's host without a window, on a clock and a queue that only the test moves.
class WidgetHosting : public ::testing::Test {
protected:
    WidgetHosting() {
        qputenv("DISPLAY", ":test");
        m_host->setMode(NCWidgetDisplayMode::expanded, 1000);
    }

    /// Lets time pass and the loop be turned, the reports that this starts with it.
    void pass(std::chrono::seconds time) {
        constexpr std::chrono::milliseconds step(250); // longer ones would be pauses
        for (auto left = std::chrono::milliseconds(time); left.count() > 0; left -= step) {
            m_now += step;
            platform::RunLoop::main().post([] {});
            play();
        }
    }
    void play() {
        QCoreApplication::sendPostedEvents();
        m_queue.drain();
        QCoreApplication::sendPostedEvents();
    }
    void receive(std::uint32_t bytes) {
        m_machine.change([&](auto& state) { state.interfaces->front().receivedBytes += bytes; });
    }
    std::string text(const char* label) {
        return m_host->card().findChild<QLabel*>(QLatin1String(label))->text().toStdString();
    }

    std::map<platform::MachineQuery, int> m_asked; // how often
    platform::SimulatedMachine m_machine{tests::smallMachine(), [this](auto& state, auto query) {
                                             ++m_asked[query];
                                             state.cpuLoad.idle += 10;
                                         }};
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Machine> m_currentMachine{m_machine};
    platform::Current<platform::Viewer> m_currentViewer{m_viewer};
    tests::HandTurnedQueue m_queue;
    tests::HandTurnedClock m_start;
    platform::Instant m_now = m_start.now();
    std::optional<WidgetHost> m_host{std::in_place, WidgetHost::Programs{"/bin/true", {}},
                                     [this] { return m_now; }};
};

/// Hidden for an hour, and with a pause that nobody announced.
TEST_F(WidgetHosting, ComesBackFromAPauseWithOneReportAndNoRate) {
    m_host->setActive(true);
    play();
    EXPECT_EQ(text("usedRAMLabel"), "3 GB");
    for (const bool announced : {true, false}) {
        pass(std::chrono::seconds(1));
        receive(2000);
        pass(std::chrono::seconds(1));
        ASSERT_EQ(text("dataReceivedNETWORKLabel"), "2 KB/s");
        if (announced) {
            m_host->setActive(false);
        }
        receive(900'000'000);
        m_machine.change([](auto& state) { state.virtualMemory.free_count = 131072; });
        m_asked.clear();
        m_now += std::chrono::hours(1);
        if (announced) {
            QCoreApplication::sendPostedEvents();
            EXPECT_EQ(m_queue.waiting(), 0U) << "nothing happens meanwhile";
            m_host->setActive(true);
        } else {
            platform::RunLoop::main().post([] {});
            QCoreApplication::sendPostedEvents();
        }
        for (const auto& timer : platform::RunLoop::main().timers()) {
            EXPECT_GT(timer->fireDate(), m_now) << "none fires for the pause";
        }
        play();
        EXPECT_EQ(m_asked[platform::MachineQuery::virtualMemory], 1);
        EXPECT_EQ(m_asked[platform::MachineQuery::interfaces], 1) << "unseen";
        EXPECT_EQ(text("usedRAMLabel"), "2 GB");
        EXPECT_EQ(text("dataReceivedNETWORKLabel"), "2 KB/s") << "what was on screen stays";
        receive(5000);
        pass(std::chrono::seconds(1));
        EXPECT_EQ(text("dataReceivedNETWORKLabel"), "5 KB/s");
    }
}

TEST_F(WidgetHosting, NamesItsButtonByThePreferenceOfTheLastReport) {
    const auto* const pill = m_host->card().findChild<QAbstractButton*>(QStringLiteral("cleanRam"));
    m_host->setActive(true);
    play();
    ASSERT_EQ(pill->text(), qt::hostText("host_CLEANRAM"));
    m_viewer.change([](platform::SimulatedViewerState& state) {
        state.suite = tests::storeHolding(tests::storedFlag("preventCleanRAMFromWidget"));
    });
    pass(std::chrono::seconds(2));
    EXPECT_EQ(pill->text(), qt::hostText("host_SHOWRAM"));
}

TEST_F(WidgetHosting, SaysWhenNoProgramOpensALinkAndIsGoneInPeace) {
    m_host->card().setAttribute(Qt::WA_DontShowOnScreen);
    m_host->card().show();
    m_host->setActive(true);
    const auto press = [this] {
        m_host->card().findChild<QAbstractButton*>(QStringLiteral("progressRAMView"))->click();
    };
    const QString missing = QStringLiteral("The Vantor app is not installed");
    for (const char* name : {"cleanRam", "memoryTotal", "openApp", "showCpuChart"}) {
        const auto* const button =
            dynamic_cast<qt::Button*>(m_host->card().findChild<QAbstractButton*>(QLatin1String(name)));
        EXPECT_TRUE(tests::eventually([button] { return button->isQuiet(); })) << name;
        EXPECT_EQ(button->toolTip(), missing);
    }
    press();
    const auto* const message = m_host->card().findChild<qt::MessageLine*>();
    EXPECT_TRUE(tests::eventually([message] { return message->isVisible(); }));
    EXPECT_EQ(message->text(), missing);
    press();
    m_host.reset();
    // The answer comes now, unless it was quicker than the end.
    (void)tests::eventually([] { return platform::RunLoop::main().nextDeadline().has_value(); });
    platform::RunLoop::main().turn(m_now);
}

} // namespace

} // namespace vantor::hosts::widget
