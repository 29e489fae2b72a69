// SPDX-License-Identifier: MIT
#include "platform/posix/BoundedChild.hpp"

#include "Output.hpp"
#include "platform/posix/Descriptor.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace vantor::platform::posix {
namespace {

using std::chrono::milliseconds;
constexpr milliseconds ample(20000);

std::string hang() {
    for (;;) {
        ::pause();
    }
}

TEST(BoundedChild, GivesTheAnswerOrNothing) {
    EXPECT_EQ(runInChild([] { return std::string("answer"); }, ample), "answer");
    EXPECT_EQ(runInChild([] { return std::string(1 << 20, 'x'); }, ample)->size(), 1 << 20);
    EXPECT_EQ(runInChild([] { return std::string(); }, ample), std::nullopt);
    EXPECT_EQ(runInChild([]() -> std::string { std::abort(); }, ample), std::nullopt);
    EXPECT_EQ(runInChild([] { return std::string(3 << 20, 'x'); }, ample), std::nullopt);
    int touched = 0;
    const auto greet = [&touched] {
        std::puts("a driver's greeting");
        std::fflush(stdout);
        touched = 1;
        return std::string("x");
    };
    EXPECT_EQ(tests::logOf([&] { EXPECT_EQ(runInChild(greet, ample), "x"); }), "");
    EXPECT_EQ(touched, 0);
}

TEST(BoundedChild, HoldsNothingOfItsParents) {
    static volatile std::sig_atomic_t handled = 0;
    const auto before = std::signal(SIGUSR1, [](int) { handled = 1; });
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    Descriptor reading(pipe[0]);
    Descriptor writing(pipe[1]);
    BoundedChild child;
    EXPECT_EQ(child.run(hang, milliseconds(30)), std::nullopt);
    writing.reset();
    char byte = 0;
    EXPECT_EQ(::read(reading.number(), &byte, 1), 0) << "the end, since the child has no other end of it";
    const auto openOnes = [] {
        int count = 0;
        for (int number = 0; number < 256; ++number) {
            count += ::fcntl(number, F_GETFD) >= 0 ? 1 : 0;
        }
        ::raise(SIGUSR1);
        return std::to_string(count);
    };
    EXPECT_EQ(runInChild(openOnes, ample), std::nullopt) << "the signal ends it";
    EXPECT_EQ(handled, 0);
    std::signal(SIGUSR1, before);
    std::signal(SIGUSR1, SIG_IGN);
    EXPECT_EQ(runInChild(
                  [&] {
                      ::signal(SIGUSR1, SIG_IGN);
                      return openOnes();
                  },
                  ample),
              "4")
        << "three that lead nowhere, and the answer's";
    std::signal(SIGUSR1, before);
}

TEST(BoundedChild, RunsOneAtATimeAndIsEndedAtTheEnd) {
    const auto begin = std::chrono::steady_clock::now();
    pid_t hanging = 0;
    {
        BoundedChild child;
        EXPECT_FALSE(child.isBusy());
        EXPECT_EQ(child.run(hang, milliseconds(30)), std::nullopt);
        EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(30));
        EXPECT_TRUE(child.isBusy());
        EXPECT_EQ(child.run([] { return std::string("second"); }, ample), std::nullopt);
        hanging = child.number();
        ASSERT_EQ(::kill(hanging, 0), 0);
    }
    EXPECT_NE(::kill(hanging, 0), 0);
    BoundedChild slow;
    EXPECT_EQ(slow.run(
                  [] {
                      ::usleep(50'000);
                      return std::string("late");
                  },
                  milliseconds(1)),
              std::nullopt);
    while (slow.isBusy()) {
        ::usleep(1000);
    }
    EXPECT_EQ(slow.run([] { return std::string("next"); }, ample), "next");
}

} // namespace
} // namespace vantor::platform::posix
