// SPDX-License-Identifier: MIT
#include "HandTurnedQueue.hpp"
#include "platform/time/NSTimer.hpp"
#include "platform/time/WorkerPool.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <future>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

using namespace vantor::platform;
using vantor::tests::HandTurnedClock;

namespace {

double waitOf(double interval) {
    HandTurnedClock clock;
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(
        interval, [] {}, true);
    return std::chrono::duration<double>(timer->fireDate() - clock.now()).count();
}

TEST(Timer, SkipsMissedFiresAndStaysOnItsGrid) {
    HandTurnedClock clock;
    int fired = 0;
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(
        1.0, [&] { ++fired; }, true);
    clock.advance(0.999);
    EXPECT_EQ(fired, 0);
    clock.advance(2.501); // 3.5: the fires at 1, 2 and 3 have become one
    EXPECT_EQ(fired, 1);
    clock.advance(0.499);
    EXPECT_EQ(fired, 1);
    clock.advance(0.001);
    EXPECT_EQ(fired, 2);
}

TEST(Timer, PinsOnlyTheWaitOfAnOddInterval) {
    constexpr double frame = 1.0 / 60.0;
    constexpr double longest = 504'911'232.0;
    for (const double tiny : {0.0, -5.0, 1e-9, -std::numeric_limits<double>::infinity()}) {
        EXPECT_NEAR(waitOf(tiny), frame, 1e-6) << tiny;
    }
    for (const double huge : {1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_NEAR(waitOf(huge), longest, 1e-3) << huge;
    }
    EXPECT_NEAR(waitOf(2.5), 2.5, 1e-9);
}

TEST(Timer, InvalidatedInsideItsOwnActionFiresNoMore) {
    HandTurnedClock clock;
    int fired = 0;
    std::shared_ptr<NSTimer> timer;
    timer = NSTimer::scheduledTimerWithTimeInterval(
        1.0,
        [&] {
            ++fired;
            timer->invalidate();
        },
        true);
    clock.advance(1);
    clock.advance(5);
    EXPECT_EQ(fired, 1);
    EXPECT_TRUE(RunLoop::main().timers().empty());
    EXPECT_FALSE(RunLoop::main().nextDeadline().has_value());
}

TEST(RunLoop, RunsBlocksOfTimersInTheSameTurnAndOthersInTheNext) {
    HandTurnedClock clock;
    std::vector<int> order;
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(
        1.0,
        [&] {
            order.push_back(1);
            RunLoop::main().post([&] {
                order.push_back(2);
                RunLoop::main().post([&] { order.push_back(3); });
            });
        },
        false);
    clock.advance(1);
    EXPECT_EQ(order, (std::vector{1, 2}));
    EXPECT_EQ(RunLoop::main().nextDeadline(), clock.now());
    clock.advance(0);
    EXPECT_EQ(order, (std::vector{1, 2, 3}));
}

TEST(RunLoop, WhatComesBetweenTurnsStartsThenAndNotAtTheLastTurn) {
    HandTurnedClock clock;
    clock.advance(1);
    clock.pass(0.9);
    int fired = 0;
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(
        0.5,
        [&] {
            ++fired;
            clock.pass(0.1);                               // work takes its time, and
            EXPECT_LT(RunLoop::main().now(), clock.now()); // all of a turn is one instant
        },
        true);
    clock.advance(0.499);
    EXPECT_EQ(fired, 0);
    clock.advance(0.001);
    EXPECT_EQ(fired, 1);
}

TEST(RunLoop, RestartedTimersWaitAFullIntervalAndTheClockNeverRunsBack) {
    HandTurnedClock clock;
    int fired = 0;
    const auto timer = NSTimer::scheduledTimerWithTimeInterval(
        1.0, [&] { ++fired; }, true);
    RunLoop::main().restartTimers(clock.now() + std::chrono::hours(10));
    RunLoop::main().turn(clock.now());
    EXPECT_EQ(RunLoop::main().now(), clock.now() + std::chrono::hours(10));
    EXPECT_EQ(fired, 0);
    RunLoop::main().turn(clock.now() + std::chrono::hours(10) + std::chrono::seconds(1));
    EXPECT_EQ(fired, 1);
}

TEST(RunLoop, TimersThatFallDueTogetherAreServedTogether) {
    HandTurnedClock clock;
    std::vector<std::shared_ptr<NSTimer>> timers;
    for (const double interval : {1.0, 1.009, 1.018}) {
        timers.push_back(NSTimer::scheduledTimerWithTimeInterval(
            interval, [] {}, true));
    }
    EXPECT_EQ(RunLoop::main().nextDeadline(), timers[0]->fireDate());
    EXPECT_EQ(RunLoop::main().nextDeadline(RunLoop::tolerance), timers[1]->fireDate());
}

TEST(WorkerPool, RunsEveryBlockOffTheMainThreadAndWakesTheHost) {
    HandTurnedClock clock;
    std::atomic<int> ran = 0;
    std::atomic<int> ranAtLastWake = 0;
    RunLoop::main().setWakeHandler([&] { ranAtLastWake = ran.load(); });
    {
        WorkerPool pool(3);
        for (int i = 0; i < 100; ++i) {
            pool.async([&] {
                ran += isMainThread() ? 0 : 1;
                dispatch_async(dispatch_get_main_queue(), [] {});
            });
        }
    }
    RunLoop::main().setWakeHandler({});
    EXPECT_EQ(ran, 100);
    EXPECT_EQ(ranAtLastWake, 100);
}

/// A block that waits, told or untold, holds up neither those behind it nor what came of those before it.
TEST(WorkerPool, ABlockThatWaitsHoldsNobodyUp) {
    HandTurnedClock clock;
    std::atomic<int> woken = 0;
    RunLoop::main().setWakeHandler([&] { ++woken; });
    {
        std::promise<void> freed;
        std::atomic<bool> ran = false;
        WorkerPool pool(3);
        const auto awaitOthers = [wait = freed.get_future().share()] {
            EXPECT_EQ(wait.wait_for(std::chrono::seconds(20)), std::future_status::ready);
        };
        pool.async([] { dispatch_async(dispatch_get_main_queue(), [] {}); });
        pool.async([&, awaitOthers] {
            dispatch_will_wait();
            EXPECT_GE(woken, 1);
            awaitOthers();
        });
        pool.async(awaitOthers); // says nothing, and is found out
        for (int tries = 0; tries < 20 && !ran; ++tries) {
            pool.async([&] { ran = true; });
            const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(150);
            while (!ran && std::chrono::steady_clock::now() < end) {
                std::this_thread::yield();
            }
        }
        EXPECT_TRUE(ran);
        freed.set_value();
    }
    RunLoop::main().setWakeHandler({});
}

} // namespace
