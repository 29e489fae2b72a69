// SPDX-License-Identifier: MIT
#include "actions/EndApplication.hpp"

#include "TurnedPace.hpp"
#include "platform/simulated/SimulatedWork.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

using platform::ApplicationUse;
using platform::EndSignal;
using platform::RunningProcess;
using platform::SimulatedWorkState;
using Signals = std::vector<std::pair<int, EndSignal>>;
constexpr auto term = EndSignal::terminate, kill = EndSignal::kill;
const std::string files = "app.slice/app-org.x.Files-1.scope";

class End : public testing::Test {
protected:
    End() {
        process(1, 0, "init", "", false);
        process(5, 1, "sshd", "", false);
        process(10, 5, "sshd", ""); // the login's own
        process(11, 10, "bash", "", true, 11);
        process(12, 11, "vim", "");
        process(13, 1, "daemon", "", true, 13); // its parent has ended
        process(20, 30, "files", files);
        process(21, 20, "helper", files);
        process(30, 1, "systemd", "init.scope");
        process(31, 30, "shell", "session.slice/shell.service");
        process(40, 30, "terminal", "app.slice/app-term-1.scope");
        process(41, 40, "bash", "app.slice/app-term-1.scope");
        process(42, 41, "vantor", "app.slice/app-term-1.scope");
        process(50, 30, "vantor-widget", "app.slice/app-vantor-1.scope");
        process(60, 5, "dwm", "", true, 60); // from a display manager
        process(61, 60, "firefox", "", true, 61);
        process(62, 5, "gdm-x-session", "", true, 62);
        process(63, 62, "i3", "", true, 62);
        process(64, 13, "xinit", "");
        process(65, 1, "systemd", ""); // where it has no group of its own
        m_work.change([](SimulatedWorkState& state) {
            state.ownNumber = 42;
            state.level = platform::MemoryLevel{8000, 1000};
        });
    }
    void process(int number, int parent, const std::string& program, const std::string& group,
                 bool isThisUsers = true, int session = 10) {
        m_work.change([&](SimulatedWorkState& state) {
            state.processes[number] = {.identity = {number, 7, program},
                                       .parent = parent,
                                       .session = session,
                                       .isThisUsers = isThisUsers,
                                       .program = program,
                                       .group = group};
        });
    }
    static ApplicationUse application(const std::vector<int>& numbers) {
        ApplicationUse use{.memory = 100, .kernel = 20, .swap = 3};
        for (const int number : numbers) {
            use.processes.push_back({number, 7});
        }
        return use;
    }
    static EndRefusal refusal(const std::vector<int>& numbers) {
        return EndApplication(application(numbers)).refusal();
    }
    Signals signals() {
        Signals sent;
        m_work.change([&](SimulatedWorkState& state) { sent = std::exchange(state.signals, {}); });
        return sent;
    }

    TurnedPace m_pace;
    platform::SimulatedWork m_work;
    platform::Current<platform::WorkloadControl> m_control{m_work};
};

TEST_F(End, TellsAllProcessesOfTheGroupAndMeasures) {
    EndApplication action(application({20, 99}), m_pace.pace());
    EXPECT_EQ(action.refusal(), EndRefusal::none);
    EXPECT_EQ(action.comesBack(), 120U);
    EXPECT_EQ(action.swap(), 3U);
    process(22, 20, "late", files);
    process(23, 20, "mover", files);
    m_work.change([](SimulatedWorkState& state) {
        state.processes[20].identity.start = 8; // its number stands for another one by now,
        state.processes[20].group = "app.slice/app-other-1.scope";
    });
    const EndingState told = action.terminate();
    EXPECT_EQ(signals(), (Signals{{21, term}, {22, term}, {23, term}})); // which hears nothing
    EXPECT_EQ(told.told, 3U);
    EXPECT_EQ(told.left, 0U);
    m_work.change([](SimulatedWorkState& state) { state.level->available = 1110; });
    EXPECT_EQ(action.state().availableBefore, 1000U);
    EXPECT_EQ(action.state().availableNow, 1110U);
    EXPECT_EQ(action.terminate().told, 3U);
    EXPECT_TRUE(signals().empty()); // once is enough
}

TEST_F(End, KillsOnlyAfterATimeAndOnlyWhatIsLeft) {
    m_work.change([](SimulatedWorkState& state) { state.stubborn = {{21, kill}}; });
    EndApplication action(application({20, 21}), m_pace.pace());
    EXPECT_FALSE(action.mayKill());
    EXPECT_EQ(action.kill().told, 0U);
    EXPECT_EQ(action.terminate().left, 1U);
    m_pace.pass(std::chrono::milliseconds(4999));
    EXPECT_FALSE(action.mayKill());
    EXPECT_EQ(action.kill().left, 1U);
    (void)signals();
    m_pace.pass(std::chrono::milliseconds(1));
    EXPECT_TRUE(action.mayKill());
    process(24, 21, "child", files);
    EXPECT_EQ(action.kill().left, 0U);
    EXPECT_EQ(signals(), (Signals{{21, kill}, {24, kill}}));
    EXPECT_FALSE(action.mayKill());
}

TEST_F(End, RefusesWhatTheSessionRestsOnOthersAndItself) {
    EXPECT_EQ(refusal({1}), EndRefusal::isSystem);
    EXPECT_EQ(refusal({5}), EndRefusal::isAnotherUsers);
    EXPECT_EQ(refusal({20, 5}), EndRefusal::isAnotherUsers);
    for (const int session : {10, 11, 30, 31, 60, 62, 63, 64, 65}) {
        EXPECT_EQ(refusal({session}), EndRefusal::isSession) << session;
    }
    for (const int ours : {40, 41, 42, 50}) {
        EXPECT_EQ(refusal({ours}), EndRefusal::isOurs) << ours;
    }
    EXPECT_EQ(refusal({77}), EndRefusal::isGone);
    for (const int free : {12, 13, 20, 61}) {
        EXPECT_EQ(refusal({free}), EndRefusal::none) << free;
    }
    ApplicationUse services = application({20});
    services.isService = true;
    EndApplication refused(services);
    EXPECT_EQ(refused.refusal(), EndRefusal::isSession);
    EXPECT_EQ(refused.terminate().told, 0U);
    EndApplication ours(application({20, 41}));
    (void)ours.terminate();
    EXPECT_TRUE(signals().empty());
}

} // namespace
} // namespace vantor::tests
