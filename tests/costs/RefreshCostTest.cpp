// SPDX-License-Identifier: MIT
#include "FailingAllocation.hpp"
#include "ThreadTime.hpp"
#include "TreeStage.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

void tick(TreeStage& stage) {
    stage.figures.user += 100;
    stage.figures.idle += 300;
    stage.figures.links[1].second += 12'345;
    stage.advance(2);
}

// Upper bounds, a little above what was counted: a refresh that allocates more has begun to do something new.
class RefreshCost : public testing::Test {
protected:
    void countRefresh(std::size_t mostAllocations, std::size_t mostBytes) {
        stage.load();
        for (int i = 0; i < 4; ++i) {
            tick(stage);
        }
        stage.figures.user += 100;
        stage.figures.write(stage.tree);
        const AllocationWatch watch;
        stage.refresh();
        const std::size_t allocations = watch.allocations();
        const std::size_t bytes = watch.allocatedBytes();
        RecordProperty("allocations", std::to_string(allocations));
        RecordProperty("bytes", std::to_string(bytes));
        EXPECT_LE(allocations, mostAllocations);
        EXPECT_LE(bytes, mostBytes);
    }
    TreeStage stage;
};

TEST_F(RefreshCost, AllocationsWithoutAStore) {
    countRefresh(24, 2368);
}

TEST_F(RefreshCost, AllocationsWithAStore) {
    stage.tree.write(storeFile,
                     R"(<plist version="1.0"><dict><key>isInactiveRAMHide</key><true/></dict></plist>)");
    countRefresh(58, 5312);
}

TEST(HugeMachine, RefreshStaysUnder20Milliseconds) {
    KernelFigures figures;
    figures.processors = 1024;
    for (int i = 0; i < 5000; ++i) {
        figures.links.emplace_back("veth" + std::to_string(i), 1000);
    }
    TreeStage stage(figures);
    std::string mounts = localRoot;
    for (int i = 0; i < 5000; ++i) {
        mounts += std::to_string(i + 2) + " 1 0:25 / /mnt/" + std::to_string(i) +
                  " rw shared:1 - nfs4 server:/x rw\n";
    }
    stage.tree.write("proc/self/mountinfo", mounts);
    stage.load();
    double least = 1e9;
    for (int i = 0; i < 5; ++i) {
        tick(stage);
        stage.figures.user += 100;
        stage.figures.write(stage.tree);
        least = std::min(least, threadMilliseconds([&] { stage.refresh(); }));
    }
    RecordProperty("milliseconds", std::to_string(least));
    EXPECT_LT(least, 20 * VANTOR_SLOWDOWN);
    EXPECT_EQ(stage.controller->records().network->usage.wifiReceived, stage.figures.links[1].second);
}

} // namespace
} // namespace vantor::tests
