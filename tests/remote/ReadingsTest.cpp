// SPDX-License-Identifier: MIT
#include "platform/remote/readings/Figures.hpp"
#include "platform/remote/readings/LinkChoice.hpp"
#include "platform/remote/readings/ReadingFrom.hpp"
#include "platform/remote/readings/VolumeChoice.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace vantor::tests {
namespace {

using namespace platform::remote;
using namespace std::chrono_literals;
using platform::linux::MemorySplit;
using platform::linux::ProcessorTimes;

Reading reading(const std::string& text, std::chrono::nanoseconds taken = 0s) {
    return readingFrom(text, ExpositionFormat::text, taken);
}

Reading captured(const std::string& name, std::chrono::nanoseconds taken = 0s) {
    std::ifstream file(VANTOR_CORPUS "/exposition/" + name);
    return reading(std::string(std::istreambuf_iterator<char>(file), {}), taken);
}

NodeFigures between(const std::string& before, const std::string& after) {
    return figuresBetween(reading(before, 10s), reading(after, 20s));
}

TEST(Readings, TwoScrapesOfARealNodeGiveItsFigures) {
    const NodeFigures figures = figuresBetween(captured("scrape-1"), captured("scrape-2", 15027ms));
    ASSERT_TRUE(figures.memory && figures.storage && figures.processor && figures.network);
    EXPECT_EQ(figures.memory->total, 25276502016u);
    EXPECT_EQ(figures.storage->mountPoint, "/");
    EXPECT_EQ(usableSize(*figures.storage), 102745280512u);
    EXPECT_NEAR(usedShare(*figures.storage), 1 - 8.1932201984e10 / 102745280512, 1e-9);
    EXPECT_EQ(*figures.processor, (ProcessorTimes{.user = 384, .system = 1169, .idle = 1441, .nice = 3}));
    EXPECT_EQ(figures.network->received, 0);
    EXPECT_EQ(figures.traffic->receivedBytes, 655588252u);
    EXPECT_EQ(captured("scrape-2").nodeName, "vm");
}

TEST(Readings, OfVirtualLinksNoneCountsButAContainersWayOut) {
    const auto names = [](const Reading& of) {
        std::string all;
        for (const NodeLink* const link : countedLinks(of)) {
            all += link->name + ' ';
        }
        return all;
    };
    EXPECT_EQ(names(captured("scrape-2")), "eth0 ");
    // A bridge whose name and address systemd set looks like a card but for its name.
    const std::string bytes = "node_network_receive_bytes_total{device=\"";
    EXPECT_EQ(names(reading(bytes + "br0\"} 1\n" + bytes + "wwan0\"} 1\n" + bytes + "eth0.5\"} 1\n")),
              "wwan0 ");
    EXPECT_EQ(names(captured("links")), "mac0 veth0 veth1 ") << "a name space without a card";
    EXPECT_EQ(names(reading("node_memory_size_bytes 1\n" + bytes + "igb0\"} 1\n" + bytes + "lagg0\"} 1\n")),
              "igb0 ");
    EXPECT_EQ(names(reading("node_memory_total_bytes 1\n" + bytes + "en0\"} 1\n" + bytes + "utun0\"} 1\n")),
              "en0 ");
}

TEST(Readings, EachSystemTellsItsMemoryByItsOwnNames) {
    const auto memory = [](const std::string& lines) {
        std::string text;
        std::istringstream stream(lines);
        for (std::string line; std::getline(stream, line, ',');) {
            text += "node_memory_" + line + '\n';
        }
        return reading(text).memory;
    };
    EXPECT_EQ(memory("total_bytes 100,internal_bytes 40,purgeable_bytes 5,wired_bytes 20,compressed_bytes 10,"
                     "active_bytes 30,inactive_bytes 30"),
              (MemorySplit{.total = 100,
                           .free = 35,
                           .active = 30,
                           .inactive = 30,
                           .wired = 20,
                           .purgeable = 5,
                           .compressed = 10}));
    EXPECT_EQ(
        memory("size_bytes 100,free_bytes 10,inactive_bytes 20,cache_bytes 5,active_bytes 40,wired_bytes 25"),
        (MemorySplit{.total = 100, .free = 35, .active = 40, .wired = 25, .purgeable = 25}));
    // A site that keeps two families, and one of before MemAvailable.
    EXPECT_EQ(memory("MemTotal_bytes 100,MemAvailable_bytes 40")->free, 40u);
    EXPECT_EQ(memory("MemTotal_bytes 100,MemFree_bytes 10,Active_file_bytes 20,SReclaimable_bytes 5")->free,
              35u);
    EXPECT_FALSE(memory("MemTotal_bytes 100"));
    EXPECT_FALSE(memory("total_bytes 100,wired_bytes 20"));
    EXPECT_FALSE(memory("MemTotal_bytes NaN,MemAvailable_bytes 1"));
}

TEST(Readings, TheFullestRealVolumeIsTold) {
    const auto fullest = [](std::initializer_list<const char*> volumes) -> std::string {
        std::string text;
        for (const std::string volume : volumes) { // mount point, type, available of 100
            const std::size_t type = volume.find(' '), available = volume.find(' ', type + 1);
            const std::string labels = "{device=\"d\",device_error=\"\",fstype=\"" +
                                       volume.substr(type + 1, available - type - 1) + "\",mountpoint=\"" +
                                       volume.substr(0, type) + "\"} ";
            text += "node_filesystem_size_bytes" + labels + "100\n";
            text += volume.ends_with("ro") ? "node_filesystem_readonly" + labels + "1\n" : "";
            text += volume.ends_with("bad") ? "node_filesystem_device_error" + labels + "1\n" : "";
            text +=
                "node_filesystem_avail_bytes" + labels + std::to_string(std::atoi(&volume[available])) + '\n';
        }
        const Reading made = reading(text);
        const NodeVolume* const volume = fullestVolume(made);
        return volume != nullptr ? volume->mountPoint : "none";
    };
    EXPECT_EQ(fullest({"/ ext4 50", "/srv xfs 5", "/home ext4 20"}), "/srv");
    EXPECT_EQ(fullest({"/ ext4 50", "/boot/efi vfat 5", "/run/user tmpfs 1", "/mnt nfs4 2", "/boot ext4 1",
                       "/snap/x squashfs 0", "/media/x ext4 0 ro", "/bad ext4 0 bad", "/s fuse.sshfs 1"}),
              "/");
    EXPECT_EQ(fullest({"/System/Volumes/Data apfs 5", "/ apfs 5"}), "/") << "two mounts of one device";
    EXPECT_EQ(fullest({"/ overlay 50", "/etc/hosts tmpfs 1"}), "/") << "a container";
    EXPECT_EQ(fullest({}), "none");
}

TEST(Readings, WhatIsKeptBackForRootIsNeitherUsedNorFree) {
    const auto told = [](const std::string& mount, const std::string& available, const std::string& free) {
        const std::string labels = "_bytes{mountpoint=\"" + mount + "\",fstype=\"ufs\"} ";
        return "node_filesystem_size" + labels + "100\nnode_filesystem_avail" + labels + available + "\n" +
               (free.empty() ? "" : "node_filesystem_free" + labels + free + "\n");
    };
    const Reading some = reading(told("/", "40", "60") + told("/srv", "45", "45") + told("/home", "50", ""));
    ASSERT_NE(fullestVolume(some), nullptr);
    EXPECT_EQ(fullestVolume(some)->mountPoint, "/srv");
    EXPECT_DOUBLE_EQ(usedShare(*fullestVolume(some)), 0.55);
    EXPECT_EQ(usableSize(some.volumes.front()), 80u);
    const Reading full = reading(told("/", "-3", "5")); // root writes into it
    ASSERT_NE(fullestVolume(full), nullptr);
    EXPECT_EQ(usedShare(*fullestVolume(full)), 1);
    EXPECT_EQ(fullestVolume(reading(told("/", "0", "100"))), nullptr) << "nothing of it is for anybody";
}

const std::string cpu = "node_cpu_seconds_total{cpu=\"";

TEST(Figures, CountersThatFallGoOrComeCountAsNothing) {
    const auto passed = [](const std::string& before, const std::string& after) {
        return between(before, after).processor;
    };
    const std::string user = cpu + "0\",mode=\"user\"} ", idle = cpu + "0\",mode=\"idle\"} ";
    EXPECT_EQ(passed(user + "1\n" + idle + "10\n", user + "2.5\n" + idle + "9\n"),
              (ProcessorTimes{.user = 150}));
    // Processor 1 goes, processor 2 comes with all that it ever had.
    EXPECT_EQ(passed(user + "1\n" + cpu + "1\",mode=\"user\"} 5\n",
                     user + "2\n" + cpu + "2\",mode=\"user\"} 900\n"),
              (ProcessorTimes{.user = 100}));
    EXPECT_EQ(passed(user + "1\n" + idle + "1\n", user + "900\n" + idle + "2\n"),
              (ProcessorTimes{.idle = 100}));
    EXPECT_EQ(passed(user + "1\n", user + "NaN\n"), std::nullopt);
    EXPECT_EQ(passed(user + "1\n", user + "1\n"), std::nullopt) << "no tick passed";
    // Modes of every system, known or not; the second of two jobs that tell the same counter is passed over.
    std::string begun, ended;
    for (const char* const mode : {"iowait", "wait", "steal", "spin", "kernel", "nice"}) {
        begun += cpu + "0\",mode=\"" + mode + "\"} 1\n";
        ended += cpu + "0\",mode=\"" + mode + "\"} 2\n" + cpu + "0\",mode=\"" + mode + "\"} 7\n";
    }
    EXPECT_EQ(passed(begun, ended), (ProcessorTimes{.system = 300, .idle = 200, .nice = 100}));

    const std::string in = "node_network_receive_bytes_total{device=\"";
    EXPECT_EQ(between(in + "eth0\"} 50\n" + in + "eth1\"} 10\n", in + "eth0\"} 40\n" + in + "eth1\"} 110\n")
                  .network->received,
              10);
    EXPECT_FALSE(between(in + "eth0\"} 50\n", in + "eth1\"} 60\n").network) << "no link told twice";
}

TEST(Figures, NoRateHoldsAcrossARestartOrWithoutTime) {
    const std::string user = cpu + "0\",mode=\"user\"} ", boot = "node_boot_time_seconds ";
    EXPECT_TRUE(between(boot + "100\n" + user + "1\n", boot + "101\n" + user + "2\n").processor);
    EXPECT_FALSE(between(boot + "100\n" + user + "1\n", boot + "103\n" + user + "2\n").processor);
    const NodeFigures restarted = between(boot + "100\n" + user + "1\n", boot + "900\n" + user + "2\n");
    EXPECT_TRUE(restarted.hasRestarted);
    EXPECT_FALSE(restarted.processor);
    const NodeFigures backwards = figuresBetween(reading(user + "1\n", 20s), reading(user + "2\n", 10s));
    EXPECT_FALSE(backwards.processor);
    EXPECT_EQ(backwards.interval, 0s);
}

} // namespace
} // namespace vantor::tests
