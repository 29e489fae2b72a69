// SPDX-License-Identifier: MIT
#include "TreeMachine.hpp"
#include "hang/HangingStatvfs.hpp"
#include "platform/time/WorkerPool.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>

// Linked with a statvfs that hangs on demand. The reports' pace is the test's clock; only the second that a
// hung mount is granted passes for real.
namespace vantor::tests {
namespace {

using namespace std::chrono_literals;

class Volume : public testing::Test {
protected:
    ~Volume() override { hangStatvfs(false); }
    bool answers() { return machine->volumeCapacities(tree.root().string()).has_value(); }

    TestTree tree;
    TreeMachine machine{tree.root()}; // without proc/self/mountinfo each query goes through the waiter
};

TEST_F(Volume, AHungMountFailsAfterASecondThenAtOnceAndRecoversBetweenReports) {
    ASSERT_TRUE(answers());
    machine.pass(2s);
    const auto hungBefore = statvfsCallsThatHung();
    hangStatvfs(true);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(answers());
    EXPECT_GE(std::chrono::steady_clock::now() - start, 900ms);
    const auto second = std::chrono::steady_clock::now();
    for (int report = 0; report < 50; ++report) {
        machine.pass(2s);
        EXPECT_FALSE(answers());
    }
    EXPECT_LT(std::chrono::steady_clock::now() - second, 900ms); // fifty that wait would take a minute
    EXPECT_EQ(statvfsCallsThatHung() - hungBefore, 1);
    EXPECT_EQ(machine.failedSources(), "storage ");

    machine.pass(2s);
    EXPECT_FALSE(answers()); // a report begins
    hangStatvfs(false);
    for (int call = 0; call < 5; ++call) {
        machine.pass(20ms);
        EXPECT_FALSE(answers()); // and ends as it began
    }
    // The waiter may need a moment to come back; each further report asks again.
    bool recovered = false;
    for (int report = 0; report < 100000 && !recovered; ++report) {
        machine.pass(2s);
        recovered = answers();
    }
    EXPECT_TRUE(recovered);
    EXPECT_EQ(machine.failedSources(), "");
}

TEST_F(Volume, AFailureDoesNotBeginInsideAReport) {
    ASSERT_TRUE(answers());
    hangStatvfs(true);
    for (int call = 0; call < 5; ++call) {
        machine.pass(20ms);
        EXPECT_TRUE(answers());
    }
    EXPECT_EQ(machine.failedSources(), "");
    machine.pass(2s);
    EXPECT_FALSE(answers());
}

TEST_F(Volume, AWorkersReportEndsAsItBeganHoweverLongItIsHeldUp) {
    std::atomic<int> right = 0;
    {
        platform::WorkerPool pool(1);
        pool.async([&] {
            right += answers();
            hangStatvfs(true);
            machine.pass(10min);
            right += answers();
        });
        pool.async([&] { right += !answers(); }); // the next report fails from its start
    }
    EXPECT_EQ(right, 3);
}

TEST_F(Volume, QuittingDoesNotWaitForAHungMount) {
    hangStatvfs(true);
    auto own = std::make_unique<TreeMachine>(tree.root());
    EXPECT_FALSE((*own)->volumeCapacities(tree.root().string()));
    const auto start = std::chrono::steady_clock::now();
    own.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 500ms);
}

TEST_F(Volume, AFolderThatIsGoneIsOnTheVolumeAboveItAndAVolumeWithoutSizeFails) {
    const std::string gone = (tree.root() / "no/such/folder").string();
    ASSERT_TRUE(answers());
    EXPECT_EQ(machine->volumeCapacities(gone)->total, machine->volumeCapacities(tree.root())->total);
    machine.pass(2s);
    EXPECT_FALSE(machine->volumeCapacities("/proc"));
    EXPECT_EQ(machine->failures().front().reason, "/proc: the volume has no size");
}

} // namespace
} // namespace vantor::tests
