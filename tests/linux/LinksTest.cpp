// SPDX-License-Identifier: MIT
#include "TreeMachine.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

using namespace std::chrono_literals;
using Counters = std::pair<std::uint32_t, std::uint32_t>;
using Links = std::map<std::string, Counters>;

/// A machine whose links the test adds and takes away.
class LinksTest : public testing::Test {
protected:
    void device(const std::string& name, int type = 1, const std::string& devType = "") {
        describe(name, type, devType);
        tree.write("sys/class/net/" + name + "/device/uevent", "");
    }
    void describe(const std::string& name, int type = 1, const std::string& devType = "", int other = 0) {
        const std::string folder = "sys/class/net/" + name + '/';
        tree.write(folder + "type", std::to_string(type) + '\n');
        tree.write(folder + "uevent", (devType.empty() ? "" : "DEVTYPE=" + devType + '\n') + "INTERFACE=x\n");
        tree.write(folder + "ifindex", "7\n");
        tree.write(folder + "iflink", std::to_string(other == 0 ? 7 : other) + '\n');
    }
    void list(const std::vector<std::pair<std::string, std::uint64_t>>& links) {
        std::string text = "Inter-| Receive\n face |bytes packets\n";
        for (const auto& [name, bytes] : links) {
            text +=
                name + ": " + std::to_string(bytes) + " 0 0 0 0 0 0 0 " + std::to_string(bytes + 1) + " 0\n";
        }
        tree.write("proc/net/dev", text);
    }

    TestTree tree;
    TreeMachine machine{tree.root()};
};

TEST_F(LinksTest, ALinkKeepsItsNumberWhileItExists) {
    device("eth0");
    device("eth1");
    device("wlan0", 1, "wlan");
    list({{"eth0", 10}, {"eth1", 20}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {10, 11}}, {"en1", {20, 21}}}));
    list({{"eth1", 22}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en1", {22, 23}}}));
    list({{"wlan0", 30}, {"eth1", 24}, {"eth0", 1}}); // the lowest free number to the first of the new ones
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {30, 31}}, {"en1", {24, 25}}, {"en2", {1, 2}}}));
}

TEST_F(LinksTest, CountersWrapAt32BitsAndALinkListedTwiceCountsOnce) {
    device("eth0");
    list({{"eth0", 0xFFFFFFFF}, {"eth0", 0xFFFFFFFF}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {0xFFFFFFFF, 0}}}));
    EXPECT_EQ(machine->interfaceAddresses()->size(), 1U);
    list({{"eth0", 0x100000005}, {"eth0", 0x100000005}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {5, 6}}}));
}

TEST_F(LinksTest, TrafficThatPassesTwoLinksCountsOnce) {
    device("eth0"); // the fast path of the virtual machine's card eth1
    tree.write("sys/class/net/eth0/master/device/uevent", "");
    device("eth1");
    device("port1", 1, "dsa");
    device("mon0", 803);
    describe("enbr0", 1, "bridge");
    describe("wwan0.5", 1, "vlan");
    device("wwan0", 65534, "wwan");
    list({{"eth0", 1}, {"eth1", 2}, {"port1", 3}, {"mon0", 4}, {"enbr0", 5}, {"wwan0.5", 6}, {"wwan0", 7}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {2, 3}}, {"pdp_ip0", {7, 8}}}));
}

TEST_F(LinksTest, WithoutACardTheVirtualEthernetIsTheWayOut) {
    describe("eth0", 1, "", 40);
    describe("vethx", 1, "", 41);
    tree.write("sys/class/net/vethx/master/uevent", "");
    describe("dummy0");
    list({{"dummy0", 1}, {"eth0", 2}, {"vethx", 3}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {2, 3}}}));
    device("usb0");
    list({{"dummy0", 1}, {"eth0", 2}, {"vethx", 3}, {"usb0", 4}});
    const Links withCard = machine.countedLinks();
    EXPECT_EQ(withCard.size(), 1U);
    EXPECT_EQ(withCard.begin()->second, (Counters{4, 5}));
    list({{"dummy0", 1}, {"eth0", 2}, {"vethx", 3}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {2, 3}}}));
}

TEST_F(LinksTest, AKindThatChangesIsSeenWithinAMinute) {
    device("eth0");
    device("eth1");
    list({{"eth0", 1}, {"eth1", 2}});
    EXPECT_EQ(machine.countedLinks().size(), 2U);
    tree.write("sys/class/net/eth0/master/device/uevent", "");
    machine.pass(61s);
    EXPECT_EQ(machine.countedLinks(), (Links{{"en1", {2, 3}}}));
}

TEST_F(LinksTest, WithoutSysNamesAreAllThereIs) {
    list({{"lo", 1}, {"wlp3s0", 2}, {"eth0.5", 3}, {"docker0", 4}, {"wwp0s20u4", 5}, {"pdp_ip0", 6}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {2, 3}}, {"pdp_ip0", {5, 6}}}));
    EXPECT_EQ(machine->interfaceAddresses()->front().name, "lo0");
    EXPECT_EQ(machine->interfaceAddresses()->back().name, "virtual-pdp_ip0");
}

} // namespace
} // namespace vantor::tests
