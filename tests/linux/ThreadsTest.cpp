// SPDX-License-Identifier: MIT
#include "TreeMachine.hpp"
#include "platform/linux/user/LinuxViewer.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

// Overlapping reports on a machine whose files come and go: what the thread sanitizer is to look at.
namespace vantor::tests {
namespace {

TEST(Threads, ReportsMayOverlapWhileFilesComeAndGo) {
    const TestTree tree;
    std::filesystem::copy(std::filesystem::path(VANTOR_TEST_DATA) / "trees/laptop", tree.root(),
                          std::filesystem::copy_options::recursive);
    tree.write("proc/self/mountinfo", localRoot);
    TreeMachine machine(tree.root());
    platform::linux::LinuxViewer viewer({.folders = homeBelow(tree.root()), .useLocale = false});
    platform::linux::ScanPace pace;
    pace.firstDelay = std::chrono::milliseconds(0);
    machine->startReleasableScan(pace);
    // Without a record there is nothing to hand out while the file is away.
    platform::vm_statistics64 first{};
    ASSERT_EQ(machine->hostVirtualMemory(first), platform::KERN_SUCCESS);
    std::atomic<bool> going{true};
    std::vector<std::thread> reports;
    for (int i = 0; i < 3; ++i) {
        reports.emplace_back([&] {
            for (int round = 0; round < 30; ++round) {
                platform::vm_statistics64 memory{};
                EXPECT_EQ(machine->hostVirtualMemory(memory), platform::KERN_SUCCESS);
                EXPECT_GT(machine->physicalMemory(), 0U);
                platform::host_cpu_load_info ticks{};
                EXPECT_EQ(machine->hostCpuLoad(ticks), platform::KERN_SUCCESS);
                machine->interfaceAddresses();
                EXPECT_TRUE(machine->volumeCapacities(machine->documentDirectories()->at(0)));
                (void)viewer.readSuite("group.vantor");
                machine->failures();
            }
        });
    }
    std::thread files([&] {
        while (going) {
            std::filesystem::rename(tree.root() / "proc", tree.root() / "away");
            std::filesystem::rename(tree.root() / "away", tree.root() / "proc");
        }
    });
    for (std::thread& report : reports) {
        report.join();
    }
    going = false;
    files.join();
}

} // namespace
} // namespace vantor::tests
