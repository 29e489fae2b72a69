// SPDX-License-Identifier: MIT
#include "hosts/common/HeadlessLoop.hpp"

#include "platform/time/NSTimer.hpp"

#include <gtest/gtest.h>

#include <thread>

namespace vantor::hosts::common {
namespace {

using platform::NSTimer;
using platform::RunLoop;

TEST(HeadlessLoop, NoticesThatItWasHeldUpAndDoesNotCountThatTime) {
    int turns = 0;
    int resumed = 0;
    NSTimer::scheduledTimerWithTimeInterval(
        0.01,
        [&turns] {
            ++turns;
            if (turns == 3) { // as a stopped process, or a reader that does not read
                std::this_thread::sleep_for(std::chrono::milliseconds(700));
            }
        },
        true);
    const bool satisfied = turnUntil([&turns] { return turns == 6; }, 0.6,
                                     [&](platform::Instant now) {
                                         EXPECT_EQ(turns, 3)
                                             << "before anything that came due meanwhile is done";
                                         ++resumed;
                                         RunLoop::main().restartTimers(now);
                                     });
    RunLoop::main().clear();
    EXPECT_TRUE(satisfied) << turns;
    EXPECT_GE(resumed, 1);
}

} // namespace
} // namespace vantor::hosts::common
