// SPDX-License-Identifier: MIT
#include "hosts/common/Signals.hpp"

#include <gmock/gmock.h>
#include <poll.h>

namespace vantor::hosts::common {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

bool canBeRead(const Signals& signals) {
    pollfd ready{signals.number(), POLLIN, 0};
    return ::poll(&ready, 1, 0) == 1;
}

TEST(Signals, BecomeInputAndLeaveIgnoredOnesIgnored) {
    std::signal(SIGHUP, SIG_IGN); // as nohup(1) starts a program
    {
        const Signals signals({SIGTERM, SIGHUP, SIGWINCH}, Signals::Again::taken);
        EXPECT_FALSE(canBeRead(signals));
        for (const int signal : {SIGWINCH, SIGHUP, SIGTERM, SIGWINCH}) {
            ::raise(signal);
        }
        EXPECT_TRUE(canBeRead(signals));
        EXPECT_THAT(signals.take(), ElementsAre(SIGTERM, SIGWINCH));
        EXPECT_FALSE(canBeRead(signals));
        EXPECT_THAT(signals.take(), IsEmpty());
        ::raise(SIGTERM);
        EXPECT_THAT(signals.take(), ElementsAre(SIGTERM));
    }
    struct sigaction now {};
    ::sigaction(SIGTERM, nullptr, &now);
    EXPECT_EQ(now.sa_handler, SIG_DFL) << "put back";
}

TEST(Signals, ASecondOneEndsAProgramThatIsStuck) {
    EXPECT_EXIT(
        {
            const Signals signals({SIGTERM}, Signals::Again::actsByDefault);
            ::raise(SIGTERM);
            ::raise(SIGTERM);
        },
        ::testing::KilledBySignal(SIGTERM), "");
}

} // namespace
} // namespace vantor::hosts::common
