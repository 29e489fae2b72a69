// SPDX-License-Identifier: MIT
#include "Load.hpp"
#include "TreeMachine.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

using Links = std::map<std::string, std::pair<std::uint64_t, std::uint64_t>>;

/// What one tree's files say, worked out by hand: KiB, shares since boot in percent, counters' low 32 bits.
struct Expected {
    const char* tree;
    std::uint64_t total, free, active, inactive, wired, purgeable, compressed;
    Load sinceBoot;
    Links links;
    const char* failures;
    friend void PrintTo(const Expected& expected, std::ostream* out) { *out << expected.tree; }
};

// One machine a block.
// clang-format off
const Expected machines[] = {
    {"virtual-machine", 24684084, 23669028, 555472, 0, 57608, 729084, 0, Load{13.4784, 2.0709, 82.6398, 1.8109},
     {{"en0", {162159721, 125959}}}, ""},
    // wired: 65536 + 355404 + 21808 + 68912 + 1204 + 14848; compressed: 151204 by zswap and 215040 by zram
    {"laptop", 16215908, 7034112, 2110344, 3210096, 527712, 5835692, 366244, Load{3.8139, 1.4574, 94.7094, 0.0193},
     {{"en0", {1222411086, 812345678}}, {"en1", {705032704, 1000000000}}}, ""},
    // free: 801233412 and 50987489 of the cache of ZFS; wired: 25785748 and 16 huge pages
    {"server", 1056530432, 852220901, 131350456, 0, 42562964, 803989897, 0, Load{9.1564, 2.3888, 88.4536, 0.0012},
     {{"en0", {596859957, 1812612149}}, {"en1", {5, 9}}}, ""},
    // inactive: what swap has room for
    {"phone", 3809036, 1320448, 799112, 401220, 307362, 1208108, 311296, Load{15.4844, 14.7558, 63.5702, 6.1895},
     {{"en0", {998877665, 112233445}}, {"en1", {0, 0}}, {"pdp_ip0", {412345678, 32345678}}}, ""},
    // The host's available memory and its cache of ZFS shine through; no processor file: all the time counts as idle.
    {"container", 2097152, 1048576, 307200, 0, 0, 0, 0, Load{0, 0, 100, 0},
     {{"en0", {123456, 654321}}}, "processor "},
};
// clang-format on

class Trees : public testing::TestWithParam<Expected> {};

TEST_P(Trees, SaysWhatTheFilesSay) {
    const Expected& expected = GetParam();
    TreeMachine machine(std::filesystem::path(VANTOR_TEST_DATA) / "trees" / expected.tree);
    platform::vm_statistics64 memory{};
    ASSERT_EQ(machine->hostVirtualMemory(memory), platform::KERN_SUCCESS);
    EXPECT_EQ(machine->physicalMemory(), expected.total * 1024);
    EXPECT_EQ(memory.free_count, expected.free / 4);
    EXPECT_EQ(memory.active_count, expected.active / 4);
    EXPECT_EQ(memory.inactive_count, expected.inactive / 4);
    EXPECT_EQ(memory.wire_count, expected.wired / 4);
    EXPECT_EQ(memory.purgeable_count, expected.purgeable / 4);
    EXPECT_EQ(memory.compressor_page_count, expected.compressed / 4);

    platform::host_cpu_load_info first{};
    ASSERT_EQ(machine->hostCpuLoad(first), platform::KERN_SUCCESS);
    const Load load = loadBetween({}, first);
    EXPECT_NEAR(load.user, expected.sinceBoot.user, 0.001);
    EXPECT_NEAR(load.system, expected.sinceBoot.system, 0.001);
    EXPECT_NEAR(load.idle, expected.sinceBoot.idle, 0.001);
    EXPECT_NEAR(load.nice, expected.sinceBoot.nice, 0.001);

    EXPECT_EQ(machine.countedLinks(), expected.links);
    EXPECT_EQ(machine.failedSources(), expected.failures);
}

INSTANTIATE_TEST_SUITE_P(All, Trees, testing::ValuesIn(machines));

TEST(MemoryBeyond16TiB, IsCountedInLargerPages) {
    constexpr std::uint64_t tebibyte = std::uint64_t{1} << 40;
    const TestTree tree;
    tree.write("proc/meminfo", "MemTotal: " + std::to_string(24 * tebibyte / 1024) +
                                   " kB\nMemAvailable: " + std::to_string(20 * tebibyte / 1024) + " kB\n");
    TreeMachine machine(tree.root());
    std::uint64_t pageSize = 0;
    platform::vm_statistics64 record{};
    ASSERT_EQ(machine->hostPageSize(pageSize), platform::KERN_SUCCESS);
    ASSERT_EQ(machine->hostVirtualMemory(record), platform::KERN_SUCCESS);
    EXPECT_EQ(pageSize, 8192U);
    EXPECT_EQ(machine->physicalMemory() - record.free_count * pageSize, 4 * tebibyte);
}

} // namespace
} // namespace vantor::tests
