// SPDX-License-Identifier: MIT
#include "hosts/qt/LoopDriver.hpp"

#include "Eventually.hpp"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <thread>
#include <vector>

namespace vantor::hosts::qt {
namespace {

using platform::RunLoop;

/// Threads post as fast as they can, also while the driver is stopped and started again, and after its end.
TEST(LoopDriving, TakesWhatOtherThreadsPost) {
    constexpr int each = 300;
    std::vector<int> seen(3, 0); // of each thread, on this one: no lock guards it
    std::vector<std::thread> threads;
    {
        LoopDriver driver([](platform::Instant now) { RunLoop::main().turn(now); },
                          [] { return std::chrono::steady_clock::now(); });
        driver.start();
        for (int& count : seen) {
            threads.emplace_back([&count] {
                for (int i = 0; i < each; ++i) {
                    RunLoop::main().post([&count] { ++count; });
                }
            });
        }
        for (int i = 0; i < 20; ++i) {
            driver.stop();
            driver.start();
            QCoreApplication::processEvents();
        }
        EXPECT_TRUE(tests::eventually([&] { return seen == std::vector<int>(3, each); }));
        threads.emplace_back([] {
            for (int i = 0; i < each; ++i) {
                RunLoop::main().post([] {});
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    RunLoop::main().clear();
}

} // namespace
} // namespace vantor::hosts::qt
