// SPDX-License-Identifier: MIT
#include "actions/FreeUpMemory.hpp"

#include "TurnedPace.hpp"
#include "platform/simulated/SimulatedWork.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

using platform::ReclaimableGroup;
using platform::SimulatedWorkState;
using platform::WorkQuery;
constexpr std::uint64_t MiB = 1 << 20;

/// A machine of 8 GiB that is short of memory: two idle applications, and one at work.
class FreeUp : public testing::Test {
protected:
    static SimulatedWorkState shortOfMemory() {
        SimulatedWorkState state;
        state.level = platform::MemoryLevel{8192 * MiB, 1000 * MiB};
        state.swap = platform::SwapSpace{4096 * MiB, 4000 * MiB};
        state.memoryPressure = platform::Pressure{};
        state.groups = {{"small", 20 * MiB}, {"working", 900 * MiB}, {"large", 200 * MiB}};
        return state;
    }
    /// Every answer about a group finds one of them busier: by 21 ms each.
    void script(SimulatedWorkState& state, WorkQuery query) {
        if (query == WorkQuery::groups && state.groups.size() > 1) {
            state.groups[1].processorTime += 21'000;
        }
        if (query == WorkQuery::reclaim) {
            ++m_steps;
            m_pace.pass(m_stepTakes);
            if (m_onStep) {
                m_onStep(state);
            }
        }
    }
    MemoryFreed run() { return FreeUpMemory(m_always, m_pace.pace()).run(m_always); }
    FreeUpRefusal refusal(const std::function<void(SimulatedWorkState&)>& with) {
        m_work.change(with);
        const FreeUpMemory action(m_always, m_pace.pace());
        EXPECT_EQ(action.bytes() == 0, action.refusal() != FreeUpRefusal::none);
        m_work.change([](SimulatedWorkState& state) { state = shortOfMemory(); });
        return action.refusal();
    }

    const FreeUpMemory::KeepGoing m_always = [] { return true; };
    TurnedPace m_pace;
    int m_steps = 0;
    std::chrono::milliseconds m_stepTakes{0};
    std::function<void(SimulatedWorkState&)> m_onStep;
    platform::SimulatedWork m_work{
        shortOfMemory(), [this](SimulatedWorkState& state, WorkQuery query) { script(state, query); }};
    platform::Current<platform::Workload> m_workload{m_work};
    platform::Current<platform::WorkloadControl> m_control{m_work};
};

TEST_F(FreeUp, MovesWhatIdleApplicationsDoNotUseAndMeasuresIt) {
    const FreeUpMemory action(m_always, m_pace.pace());
    EXPECT_EQ(action.bytes(), 220 * MiB); // not the one at work
    EXPECT_EQ(m_steps, 0);
    std::uint64_t told = 0;
    const MemoryFreed freed = action.run(m_always, [&](std::uint64_t asked) { told = asked; });
    EXPECT_EQ(freed, (MemoryFreed{1000 * MiB, 1220 * MiB, 220 * MiB, FreeUpEnd::finished}));
    EXPECT_EQ(told, 220 * MiB);
    EXPECT_EQ(m_steps, 13 + 2); // of 16 MiB at most
    EXPECT_EQ(m_pace.waited(), std::chrono::milliseconds(2000 + 15 * 50));
}

TEST_F(FreeUp, SaysWhyItCanDoNothing) {
    using State = SimulatedWorkState;
    EXPECT_EQ(refusal([](State& state) { state.level.reset(); }), FreeUpRefusal::notTold);
    EXPECT_EQ(refusal([](State& state) { state.hasGroups = false; }), FreeUpRefusal::noGroups);
    EXPECT_EQ(refusal([](State& state) { state.groups.clear(); }), FreeUpRefusal::noOwnGroups);
    EXPECT_EQ(refusal([](State& state) { state.swap.reset(); }), FreeUpRefusal::noSwap);
    EXPECT_EQ(refusal([](State& state) { state.swap->total = 0; }), FreeUpRefusal::noSwap);
    EXPECT_EQ(refusal([](State& state) { state.swap->free = 1638 * MiB; }), FreeUpRefusal::swapNearlyFull);
    EXPECT_EQ(refusal([](State& state) { state.level->available = 4097 * MiB; }),
              FreeUpRefusal::enoughAvailable);
    EXPECT_EQ(refusal([](State& state) {
                  state.groups = {{"small", 15 * MiB}};
              }),
              FreeUpRefusal::nothingIdle);
    EXPECT_EQ(refusal([](State&) {}), FreeUpRefusal::none);
    const FreeUpMemory stopped([] { return false; }, m_pace.pace());
    EXPECT_EQ(stopped.refusal(), FreeUpRefusal::stopped);
    (void)stopped.run(m_always);
    EXPECT_EQ(m_steps, 0);
}

TEST_F(FreeUp, AsksNoMoreOfTheSwapThanItCanSpare) {
    m_work.change([](SimulatedWorkState& state) { state.swap->free = state.swap->total / 5 * 2 + 40 * MiB; });
    EXPECT_EQ(FreeUpMemory(m_always, m_pace.pace()).bytes(), 40 * MiB);
    m_onStep = [](SimulatedWorkState& state) { state.swap->free -= 30 * MiB; }; // others want it, too
    const MemoryFreed freed = run();
    EXPECT_EQ(freed.end, FreeUpEnd::swapNearlyFull);
    EXPECT_EQ(m_steps, 1);
}

TEST_F(FreeUp, EndsWhereItGainsNothingOrHurts) {
    m_work.change([](SimulatedWorkState& state) { state.gain = 0.2; });
    const std::uint64_t gain = 8 * (16 * MiB / 5);
    EXPECT_EQ(run(), (MemoryFreed{1000 * MiB, 1000 * MiB + gain, 128 * MiB, FreeUpEnd::compressesBadly}));
    EXPECT_EQ(m_steps, 8);
    m_work.change([](SimulatedWorkState& state) { state = shortOfMemory(); });
    m_steps = 0;
    m_onStep = [this](SimulatedWorkState& state) { state.gain = m_steps > 4 ? 0.3 : 0; }; // it takes a while
    EXPECT_EQ(run().end, FreeUpEnd::finished);
    m_work.change([](SimulatedWorkState& state) { state = shortOfMemory(); });
    m_onStep = [](SimulatedWorkState& state) { // the kernel takes cache instead
        state.swap->free += 16 * MiB;
        state.level->available -= 16 * MiB;
    };
    EXPECT_EQ(run().end, FreeUpEnd::tookCache);
    m_work.change([](SimulatedWorkState& state) { state = shortOfMemory(); });
    m_stepTakes = std::chrono::milliseconds(950); // with the pause a second
    m_onStep = [](SimulatedWorkState& state) { state.memoryPressure->microseconds += 99'000; };
    EXPECT_EQ(run().end, FreeUpEnd::finished);
    m_work.change([](SimulatedWorkState& state) { state = shortOfMemory(); });
    m_steps = 0;
    m_onStep = [this](SimulatedWorkState& state) { // it begins late
        state.memoryPressure->microseconds += m_steps > 5 ? 101'000 : 0;
    };
    EXPECT_EQ(run().end, FreeUpEnd::underPressure);
    EXPECT_EQ(m_steps, 6);
}

TEST_F(FreeUp, LeavesAnApplicationThatAwakesAndOneThatRefuses) {
    m_onStep = [this](SimulatedWorkState& state) {
        state.groups[2].processorTime += m_steps == 2 ? 30'000 : 0;
    };
    EXPECT_EQ(run().moved, (32 + 20) * MiB);
    m_onStep = {};
    m_work.change([](SimulatedWorkState& state) { state.answer = platform::ReclaimAnswer::refused; });
    EXPECT_EQ(run().end, FreeUpEnd::refused);
    m_work.change([](SimulatedWorkState& state) { state.answer = platform::ReclaimAnswer::less; });
    m_steps = 0;
    EXPECT_EQ(run().end, FreeUpEnd::finished);
    EXPECT_EQ(m_steps, 1); // the other one is smaller than a step by now
}

TEST_F(FreeUp, CanBeStoppedAtEachStep) {
    const FreeUpMemory action(m_always, m_pace.pace());
    const MemoryFreed freed = action.run([left = 3]() mutable { return --left >= 0; });
    EXPECT_EQ(freed.end, FreeUpEnd::stopped);
    EXPECT_EQ(freed.moved, 48 * MiB);
}

} // namespace
} // namespace vantor::tests
