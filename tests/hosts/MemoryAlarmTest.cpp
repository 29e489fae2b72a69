// SPDX-License-Identifier: MIT
#include "hosts/common/HostMemoryAlarm.hpp"

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using vantor::hosts::common::isNewAlarm;

TEST(MemoryAlarm, IsToldOnceUntilItWasCalm) {
    const std::chrono::steady_clock::time_point now{1h};
    EXPECT_TRUE(isNewAlarm(std::nullopt, now));
    EXPECT_FALSE(isNewAlarm(now - 10min + 1s, now));
    EXPECT_TRUE(isNewAlarm(now - 10min, now));
}
