// SPDX-License-Identifier: MIT
#include "Output.hpp"
#include "platform/linux/LinuxMachine.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>

// Relations with what the machine's own tools say, never values: the machine moves on between two readings.
namespace vantor::platform::linux {
namespace {

TEST(LiveMachine, MemoryAgreesWithFree) {
    LinuxMachine machine;
    std::istringstream words(tests::shell("free -b").output);
    std::string word;
    while (words >> word && word != "Mem:") {
    }
    std::uint64_t total = 0, used = 0, unusedPages = 0, shared = 0, cached = 0, available = 0;
    if (!(words >> total >> used >> unusedPages >> shared >> cached >> available)) {
        GTEST_SKIP() << "no usable free";
    }
    vm_statistics64 record{};
    std::uint64_t pageSize = 0;
    ASSERT_EQ(machine.hostPageSize(pageSize), KERN_SUCCESS);
    ASSERT_EQ(machine.hostVirtualMemory(record), KERN_SUCCESS);
    const auto physical = static_cast<double>(machine.physicalMemory());
    EXPECT_EQ(machine.physicalMemory(), total);
    const double free = static_cast<double>(record.free_count) * static_cast<double>(pageSize);
    EXPECT_NEAR(free, static_cast<double>(available), 0.05 * physical);
    EXPECT_NEAR(physical - free, static_cast<double>(used), 0.05 * physical);
    EXPECT_LE(record.purgeable_count, record.free_count);
    EXPECT_GT(record.active_count, 0U);
    EXPECT_GT(record.wire_count, 0U);
    EXPECT_TRUE(machine.failures().empty());
}

TEST(LiveMachine, VolumeAgreesWithDf) {
    LinuxMachine machine;
    const std::vector<std::string> folders = *machine.documentDirectories();
    if (folders.empty()) {
        GTEST_SKIP() << "a user without a home";
    }
    const std::optional<VolumeCapacities> volume = machine.volumeCapacities(folders.front());
    std::istringstream words(
        tests::shell("df -B1 --output=size,used,avail,pcent '" + folders.front() + "' | tail -n 1").output);
    std::int64_t size = 0, used = 0, available = 0, percent = 0;
    if (!(words >> size >> used >> available >> percent)) {
        GTEST_SKIP() << "no usable df, or no such folder";
    }
    ASSERT_TRUE(volume);
    EXPECT_EQ(*volume->total + *volume->reserved, size);
    const auto total = static_cast<double>(*volume->total);
    EXPECT_NEAR(total, static_cast<double>(used + available), 0.02 * total);
    EXPECT_NEAR(static_cast<double>(*volume->available), static_cast<double>(available), 0.02 * total);
    const double share = 1 - static_cast<double>(*volume->available) / total;
    EXPECT_NEAR(share * 100, static_cast<double>(percent), 1.5); // it rounds up, and others write meanwhile
    EXPECT_GE(*volume->availableForImportantUsage, *volume->available);
    EXPECT_LE(*volume->availableForImportantUsage, *volume->total);
}

TEST(LiveMachine, FirstTicksAreTheSharesSinceBootAndThenTheyOnlyRise) {
    LinuxMachine machine;
    host_cpu_load_info first{};
    ASSERT_EQ(machine.hostCpuLoad(first), KERN_SUCCESS);
    std::ifstream stat("/proc/stat");
    std::string label;
    double user = 0, nice = 0, system = 0, idle = 0, iowait = 0, irq = 0, softirq = 0, steal = 0;
    stat >> label >> user >> nice >> system >> idle >> iowait >> irq >> softirq >> steal;
    const double all = user + nice + system + idle + iowait + irq + softirq + steal;
    const double given = 1.0 * first.user + first.system + first.idle + first.nice;
    EXPECT_NEAR(first.user / given, user / all, 0.02);
    EXPECT_NEAR(first.idle / given, (idle + iowait) / all, 0.02);
    EXPECT_NEAR(first.system / given, (system + irq + softirq + steal) / all, 0.02);
    for (int i = 0; i < 3; ++i) {
        host_cpu_load_info next{};
        ASSERT_EQ(machine.hostCpuLoad(next), KERN_SUCCESS);
        EXPECT_TRUE(next.user >= first.user && next.system >= first.system && next.idle >= first.idle &&
                    next.nice >= first.nice);
        EXPECT_GT(std::uint64_t{next.user} + next.system + next.idle + next.nice,
                  std::uint64_t{first.user} + first.system + first.idle + first.nice);
        first = next;
    }
}

TEST(LiveMachine, ListsTheLoopbackUnderThePlatformsName) {
    LinuxMachine machine;
    const std::vector<InterfaceAddress> links = machine.interfaceAddresses().value();
    EXPECT_EQ(std::ranges::count(links, std::optional<std::string>("lo0"), &InterfaceAddress::name), 1);
}

} // namespace
} // namespace vantor::platform::linux
