// SPDX-License-Identifier: MIT
#include "platform/core/Current.hpp"

#include "HandTurnedQueue.hpp"
#include "platform/time/NSTimer.hpp"
#include "platform/time/WorkerPool.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>

using namespace vantor::platform;

namespace {

struct Place {
    char name;
};

char here() {
    const Place* const place = Current<Place>::get();
    return place != nullptr ? place->name : '-';
}

TEST(Current, NestsOnItsThreadAlone) {
    Place outer{'a'}, inner{'b'};
    const Current<Place> scope(outer);
    {
        const Current<Place> nested(inner);
        EXPECT_EQ(here(), 'b');
        char other = ' ', handed = ' ';
        std::thread([&] { other = here(); }).join();
        std::thread(WorkItem([&] { handed = here(); })).join();
        EXPECT_EQ(other, '-');
        EXPECT_EQ(handed, 'b');
    }
    EXPECT_EQ(here(), 'a');
    std::optional<Current<Place>> first(inner);
    const Current<Place> second(outer);
    EXPECT_DEATH(first.reset(), "did not go in turn");
}

// Two owners take turns on one loop: what each has submitted goes on with its own, through workers and back.
TEST(Current, TravelsWithBlocksAndTimers) {
    vantor::tests::HandTurnedClock clock;
    Place a{'a'}, b{'b'};
    std::string seen;
    for (Place* const place : {&a, &b}) {
        const Current<Place> scope(*place);
        NSTimer::scheduledTimerWithTimeInterval(
            1.0,
            [&] {
                seen += here();
                WorkerPool pool(1);
                pool.async([&] {
                    seen += here();
                    dispatch_async(dispatch_get_main_queue(), [&] { seen += here(); });
                });
            },
            true);
    }
    clock.advance(1.0);
    EXPECT_EQ(seen, "aabbab");
    clock.advance(1.0);
    EXPECT_EQ(seen, "aabbabaabbab");
    EXPECT_EQ(here(), '-');
}

} // namespace
