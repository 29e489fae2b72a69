// SPDX-License-Identifier: MIT
#include "Output.hpp"
#include "platform/linux/LinuxMachine.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

// Relations with what the machine's own tools say, never values: the machine moves on between two readings.
namespace vantor::platform::linux {
namespace {

/// A line of /proc/meminfo in bytes; nothing where the kernel has no such line.
double memInfo(const std::string& name) {
    std::ifstream file("/proc/meminfo");
    std::string line;
    while (std::getline(file, line)) {
        if (line.starts_with(name + ':')) {
            return std::stod(line.substr(name.size() + 1)) * 1024;
        }
    }
    return 0;
}

struct Memory {
    double free, inactive, wired;
};

/// As the manual page proc_meminfo(5) has them.
Memory memoryNow() {
    double wired = 0;
    for (const char* part :
         {"Unevictable", "SUnreclaim", "KernelStack", "PageTables", "SecPageTables", "Percpu", "Hugetlb"}) {
        wired += memInfo(part);
    }
    return {memInfo("MemAvailable"), std::min(memInfo("Inactive(anon)"), memInfo("SwapFree")), wired};
}

TEST(LiveMachine, MemoryAgreesWithTheKernelsList) {
    if (std::ifstream("/proc/spl/kstat/zfs/arcstats") || memInfo("MemAvailable") == 0) {
        GTEST_SKIP() << "the list leaves something out that counts as free";
    }
    LinuxMachine machine;
    vm_statistics64 record{};
    std::uint64_t pageSize = 0;
    ASSERT_EQ(machine.hostPageSize(pageSize), KERN_SUCCESS);
    const Memory before = memoryNow();
    ASSERT_EQ(machine.hostVirtualMemory(record), KERN_SUCCESS);
    const Memory after = memoryNow();
    const auto physical = static_cast<double>(machine.physicalMemory());
    EXPECT_EQ(physical, memInfo("MemTotal"));
    const auto expectBetween = [&](std::uint64_t pages, double one, double other) {
        const double bytes = static_cast<double>(pages) * static_cast<double>(pageSize);
        EXPECT_GE(bytes, std::min(one, other) - 0.01 * physical);
        EXPECT_LE(bytes, std::max(one, other) + 0.01 * physical);
    };
    expectBetween(record.free_count, before.free, after.free);
    expectBetween(record.inactive_count, before.inactive, after.inactive);
    expectBetween(record.wire_count, before.wired, after.wired);
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

struct Ticks {
    double user = 0, idle = 0, system = 0, all = 0;
    Ticks since(const Ticks& first) const {
        return {user - first.user, idle - first.idle, system - first.system, all - first.all};
    }
};

Ticks kernelTicks() {
    std::ifstream stat("/proc/stat");
    std::string label;
    double user = 0, nice = 0, system = 0, idle = 0, iowait = 0, irq = 0, softirq = 0, steal = 0;
    stat >> label >> user >> nice >> system >> idle >> iowait >> irq >> softirq >> steal;
    return {user, idle + iowait, system + irq + softirq + steal,
            user + nice + system + idle + iowait + irq + softirq + steal};
}

Ticks ticksOf(const host_cpu_load_info& info) {
    return {1.0 * info.user, 1.0 * info.idle, 1.0 * info.system,
            1.0 * info.user + info.system + info.idle + info.nice};
}

void expectSameShares(const Ticks& given, const Ticks& kernel, double tolerance) {
    EXPECT_NEAR(given.user / given.all, kernel.user / kernel.all, tolerance);
    EXPECT_NEAR(given.idle / given.all, kernel.idle / kernel.all, tolerance);
    EXPECT_NEAR(given.system / given.all, kernel.system / kernel.all, tolerance);
}

TEST(LiveMachine, TicksOfAnIntervalAreTheKernels) {
    LinuxMachine machine;
    host_cpu_load_info first{}, last{};
    const Ticks before = kernelTicks();
    ASSERT_EQ(machine.hostCpuLoad(first), KERN_SUCCESS);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(600);
    while (std::chrono::steady_clock::now() < end) { // one processor at work
    }
    const Ticks passed = kernelTicks().since(before);
    ASSERT_EQ(machine.hostCpuLoad(last), KERN_SUCCESS);
    if (passed.all < 10) {
        GTEST_SKIP() << "ticks that stand still";
    }
    expectSameShares(ticksOf(last).since(ticksOf(first)), passed, 0.05);
}

TEST(LiveMachine, FirstTicksAreTheSharesSinceBootAndThenTheyOnlyRise) {
    LinuxMachine machine;
    host_cpu_load_info first{};
    ASSERT_EQ(machine.hostCpuLoad(first), KERN_SUCCESS);
    expectSameShares(ticksOf(first), kernelTicks(), 0.02);
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

/// The bytes that a link received and sent, as the kernel shows them beside it.
std::pair<std::uint64_t, std::uint64_t> countersOf(const std::string& link) {
    const auto number = [&link](const char* name) {
        std::uint64_t bytes = 0;
        std::ifstream("/sys/class/net/" + link + "/statistics/" + name) >> bytes;
        return bytes;
    };
    return {number("rx_bytes"), number("tx_bytes")};
}

TEST(LiveMachine, TheOnlyWayOutIsCountedAsTheKernelDoes) {
    std::istringstream cards(tests::shell("cd /sys/class/net && ls -d */device | cut -d/ -f1").output);
    std::istringstream routes(
        tests::shell("awk '$2 == \"00000000\" { print $1 }' /proc/net/route | sort -u").output);
    std::string link, another;
    if (!(cards >> link) && !(routes >> link)) {
        GTEST_SKIP() << "no way out";
    }
    if (cards >> another || (routes >> another && another != link)) {
        GTEST_SKIP() << "several ways out";
    }
    LinuxMachine machine;
    const auto before = countersOf(link);
    ASSERT_TRUE(machine.interfaceAddresses()); // reads; the totals are of that reading
    const std::optional<NetworkTotals> totals = machine.networkTotals();
    const auto after = countersOf(link);
    ASSERT_TRUE(totals);
    const std::uint64_t received = totals->cards.receivedBytes + totals->modems.receivedBytes;
    const std::uint64_t sent = totals->cards.sentBytes + totals->modems.sentBytes;
    EXPECT_TRUE(before.first <= received && received <= after.first) << link << ' ' << received;
    EXPECT_TRUE(before.second <= sent && sent <= after.second) << link << ' ' << sent;
}

} // namespace
} // namespace vantor::platform::linux
