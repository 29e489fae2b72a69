// SPDX-License-Identifier: MIT
#include "WidgetStage.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/terminal/TerminalHost.hpp"
#include "platform/remote/MachineWatch.hpp"

#include <gmock/gmock.h>

#include <cstdlib>

namespace vantor::hosts::terminal {
namespace {

/// The terminal's host on a small machine, turned by hand.
class Host : public testing::Test {
protected:
    Host() {
        ::unsetenv("DISPLAY");
        ::unsetenv("WAYLAND_DISPLAY");
        m_loop.play();
    }
    void receive(std::uint32_t bytes) {
        m_machine.change(
            [&](platform::SimulatedState& state) { state.interfaces->front().receivedBytes += bytes; });
    }
    const Scene& scene() { return m_host->sceneAt(m_loop.clock.now()); }

    std::map<platform::MachineQuery, int> m_asked; // how often
    platform::SimulatedMachine m_machine{tests::smallMachine(), [this](auto& state, auto query) {
                                             ++m_asked[query];
                                             state.cpuLoad.idle += 10;
                                         }};
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Machine> m_currentMachine{m_machine};
    platform::Current<platform::Viewer> m_currentViewer{m_viewer};
    tests::HandTurnedLoop m_loop;
    std::optional<TerminalHost> m_host{std::in_place, "box"};
};

TEST_F(Host, TheSceneHoldsTheTreesTextsAndCharts) {
    EXPECT_TRUE(m_host->hasFigures());
    EXPECT_TRUE(m_host->takeChange());
    EXPECT_FALSE(m_host->takeChange());
    EXPECT_EQ(scene().host, "box");
    EXPECT_EQ(scene().sections[0].note, "of 4 GB");
    EXPECT_EQ(scene().sections[0].rows[0].figure, "3 GB");
    EXPECT_EQ(scene().sections[0].chart->arcChartViewModel->progress(), 0.75);
    EXPECT_EQ(scene().sections[1].rows.size(), 3U);
    EXPECT_EQ(scene().lines[0].rows[0].figure, "") << "no rate before the second tick";
    m_viewer.change([](platform::SimulatedViewerState& state) {
        state.suite = tests::storeHolding(tests::storedFlag("isReleasableSTORAGEShow"));
    });
    m_host->perform(platform::Source::network, m_loop.clock.now());
    m_loop.play();
    EXPECT_TRUE(m_host->takeChange());
    EXPECT_EQ(scene().sections[1].rows.size(), 4U) << "with what is releasable";
    EXPECT_EQ(scene().notice, "Refreshed");
    EXPECT_EQ(m_host->noticeEnd(), m_loop.clock.now() + std::chrono::seconds(3));
    m_loop.advance(4);
    EXPECT_EQ(scene().notice, "");
}

TEST_F(Host, AKeyThatIsHeldDownRefreshesOnceAtATime) {
    m_asked.clear();
    for (int i = 0; i < 100; ++i) {
        m_host->perform(platform::Source::network, m_loop.clock.now());
    }
    m_loop.play();
    EXPECT_EQ(m_asked[platform::MachineQuery::virtualMemory], 1);
    m_host->perform(platform::Source::network, m_loop.clock.now());
    m_loop.play();
    EXPECT_EQ(m_asked[platform::MachineQuery::virtualMemory], 2);
}

TEST_F(Host, AnIntervalOfItsOwnStandsForThePreferences) {
    m_host.reset();
    platform::RunLoop::main().clear(); // of the timers that hold its controller
    m_host.emplace("box", 10.0);
    m_loop.play();
    for (const bool afterRefresh : {false, true}) {
        if (afterRefresh) {
            m_host->perform(platform::Source::network, m_loop.clock.now());
            m_loop.play();
        }
        m_asked.clear();
        m_loop.advance(9);
        EXPECT_EQ(m_asked[platform::MachineQuery::virtualMemory], 0);
        m_loop.advance(1);
        EXPECT_EQ(m_asked[platform::MachineQuery::virtualMemory], 1);
    }
}

TEST_F(Host, ActionsOpenLinksOrSayThatNobodyDoes) {
    for (const Action action :
         {platform::Source::memory, platform::Source::storage, platform::Source::processor}) {
        m_loop.clock.pass(0.9);
        m_host->perform(action, m_loop.clock.now());
        m_loop.play();
        EXPECT_EQ(scene().notice, "The Vantor app is not installed");
        EXPECT_EQ(m_host->noticeEnd(), m_loop.clock.now() + std::chrono::seconds(3));
    }
    EXPECT_TRUE(scene().isExpanded);
    m_host->perform(HostAction::changeMode, m_loop.clock.now());
    EXPECT_FALSE(scene().isExpanded);
    EXPECT_EQ(scene().keys.size(), 3U) << "no key offers what nothing here can open";
    EXPECT_FALSE(scene().sections[0].action) << "nor does a ring";
    EXPECT_EQ(scene().keys[1].text, "Show More");
    EXPECT_FALSE(m_host->hasQuit());
    m_host->perform(HostAction::quit, m_loop.clock.now());
    EXPECT_TRUE(m_host->hasQuit());
}

TEST_F(Host, WithoutTheAppItsKeysAreQuiet) {
    ::setenv("DISPLAY", ":test", 1);
    m_viewer.change([](platform::SimulatedViewerState& state) {
        state.suite = tests::storeHolding(tests::storedFlag("preventCleanRAMFromWidget"));
    });
    m_host.emplace("box", std::nullopt, true, common::LinkOpener::Programs{"/bin/true", {}});
    EXPECT_EQ(scene().keys[1].text, "Show Memory");
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!scene().keys[1].isQuiet && std::chrono::steady_clock::now() < end) {
        m_loop.play();
    }
    EXPECT_TRUE(scene().keys[1].isQuiet && scene().keys[2].isQuiet && scene().keys[3].isQuiet);
    EXPECT_FALSE(scene().keys[0].isQuiet || scene().keys.back().isQuiet);
}

TEST_F(Host, AFailedSourceIsNamedUntilItIsBack) {
    m_machine.change([](platform::SimulatedState& state) {
        state.volume.reset();
        state.failures = {{platform::Source::storage, "/home: no answer"}};
    });
    m_loop.advance(2);
    EXPECT_EQ(scene().warning, "Storage: Not available (/home: no answer)");
    EXPECT_FALSE(scene().sections[1].isKnown);
    EXPECT_EQ(scene().sections[1].rows[0].figure, "");
    m_machine.change([](platform::SimulatedState& state) {
        state.volume = tests::smallMachine().volume;
        state.failures.clear();
    });
    m_loop.advance(2);
    EXPECT_EQ(scene().warning, "");
    EXPECT_TRUE(scene().sections[1].isKnown);
}

/// One that has told nothing yet.
struct SilentWatch final : platform::remote::MachineWatch {
    void start() override {}
    [[nodiscard]] const platform::remote::NodeState& state() const override { return told; }
    void setHandler(std::function<void()> /*handler*/) override {}
    platform::remote::NodeState told;
};

TEST_F(Host, AnotherMachineIsAskedAtOnceAfterAPause) {
    common::RemoteNode node(std::make_unique<SilentWatch>(), "web01", nullptr);
    m_host->follow(node);
    int asked = 0;
    const auto timer = platform::NSTimer::scheduledTimerWithTimeInterval(
        5, [&asked] { ++asked; }, false);
    m_host->pause();
    m_host->turn(m_loop.clock.now() + std::chrono::minutes(1));
    EXPECT_EQ(asked, 1) << "what is due for it";
    timer->invalidate();
    m_host.reset(); // before what it follows
}

/// Behind a stopped job, in a terminal that took no bytes, and with one that nobody announced.
TEST_F(Host, ComesBackFromAPauseWithOneReportAndNoRate) {
    for (const bool announced : {true, false}) {
        m_loop.advance(1);
        receive(2000);
        m_loop.advance(1);
        ASSERT_EQ(scene().lines[0].rows[0].figure, "2 KB/s");
        if (announced) {
            m_host->pause();
        }
        receive(900'000'000); // an hour's worth
        m_machine.change([](auto& state) { state.virtualMemory.free_count = 131072; });
        const platform::Instant back = m_loop.clock.now() + std::chrono::hours(1);
        m_asked.clear();
        m_host->turn(back);
        for (const auto& timer : platform::RunLoop::main().timers()) {
            EXPECT_GT(timer->fireDate(), back) << "none fires for the pause";
        }
        m_loop.queue.drain();
        m_host->turn(back);
        m_loop.queue.drain();
        EXPECT_EQ(m_asked[platform::MachineQuery::virtualMemory], 1);
        EXPECT_EQ(m_asked[platform::MachineQuery::interfaces], 1) << "unseen";
        EXPECT_EQ(scene().sections[0].rows[0].figure, "2 GB");
        EXPECT_EQ(scene().lines[0].rows[0].figure, "2 KB/s") << "what was on screen stays";
        m_loop.advance(3600);
        receive(5000);
        m_loop.advance(1);
        EXPECT_EQ(scene().lines[0].rows[0].figure, "5 KB/s");
    }
}

} // namespace
} // namespace vantor::hosts::terminal
