// SPDX-License-Identifier: MIT
#include "TreeMachine.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

using namespace std::chrono_literals;
using Counters = std::pair<std::uint64_t, std::uint64_t>;
using Links = std::map<std::string, Counters>;

/// A machine whose links the test adds and takes away.
class LinksTest : public testing::Test {
protected:
    void device(const std::string& name, int type = 1, const std::string& devType = "") {
        describe(name, type, devType);
        tree.write("sys/class/net/" + name + "/device/uevent", "");
    }
    void describe(const std::string& name, int type = 1, const std::string& devType = "") {
        const std::string folder = "sys/class/net/" + name + '/';
        tree.write(folder + "type", std::to_string(type) + '\n');
        tree.write(folder + "uevent", (devType.empty() ? "" : "DEVTYPE=" + devType + '\n') + "INTERFACE=x\n");
    }
    static std::string defaultRoute(const std::string& link) {
        return link + "\t00000000\t0100A8C0\t0003\t0\t0\t0\t00000000\n";
    }
    /// The links of /proc/net/route, whose first one carries the default route.
    void route(const std::vector<std::string>& links) {
        std::string text = "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\n";
        for (const std::string& link : links) {
            text += link == links.front() ? defaultRoute(link)
                                          : link + "\t0000A8C0\t00000000\t0001\t0\t0\t0\t00FFFFFF\n";
        }
        tree.write("proc/net/route", text);
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

TEST_F(LinksTest, CountersPast32BitsAreSeveralEntriesAndALinkListedTwiceCountsOnce) {
    device("eth0");
    const auto entries = [this] { return machine->interfaceAddresses()->size(); };
    list({{"eth0", 0x7FFFFFFFF}, {"eth0", 0x7FFFFFFFF}}); // the low 32 bits are what one entry would hold
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {0xFFFFFFFF, 0}}}));
    EXPECT_EQ(entries(), 1U);
    list({{"eth0", 0x800000005}, {"eth0", 0x800000005}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {0x100000005, 6}}}));
    EXPECT_EQ(entries(), 2U);
    list({{"eth0", 0x400'00000000}}); // 10 Gb/s for an hour
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {0x3F9'00000000, 0x3F8'00000001}}}));
    EXPECT_EQ(machine->networkTotals(), (platform::NetworkTotals{{0x400'00000000, 0x400'00000001}, {}}));
    list({{"eth0", 0x1000'00000000 * 8}}); // more than is worth the entries
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {0, 1}}}));
    list({{"eth0", 7}}); // its driver began again
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {7, 8}}}));
}

TEST_F(LinksTest, TrafficThatPassesTwoLinksCountsOnce) {
    device("eth0"); // the fast path of the virtual machine's card eth1
    tree.write("sys/class/net/eth0/master/device/uevent", "");
    device("eth1");
    device("port1", 1, "dsa");
    device("mon0", 803);
    describe("enbr0", 1, "bridge");
    device("vif1.0"); // a guest's, whose traffic goes on through the card
    std::filesystem::create_directory_symlink("../../../../bus/xen-backend",
                                              tree.root() / "sys/class/net/vif1.0/device/subsystem");
    describe("wwan0.5", 1, "vlan");
    device("wwan0", 65534, "wwan");
    list({{"eth0", 1},
          {"eth1", 2},
          {"port1", 3},
          {"mon0", 4},
          {"enbr0", 5},
          {"wwan0.5", 6},
          {"wwan0", 7},
          {"vif1.0", 8}});
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {2, 3}}, {"pdp_ip0", {7, 8}}}));
}

TEST_F(LinksTest, WithoutACardWhatCarriesADefaultRouteCounts) {
    const Links tap{{"en0", {2, 3}}};
    describe("tap0");
    describe("pod0"); // of a container inside
    list({{"lo", 9}, {"pod0", 1}, {"tap0", 2}});
    EXPECT_EQ(machine.countedLinks(), Links());
    route({"tap0", "pod0"}); // a moment later
    EXPECT_EQ(machine.countedLinks(), tap);
    device("usb0");
    list({{"pod0", 1}, {"tap0", 2}, {"usb0", 4}});
    const Links withCard = machine.countedLinks();
    EXPECT_EQ(withCard.size(), 1U);
    EXPECT_EQ(withCard.begin()->second, (Counters{4, 5}));
    list({{"pod0", 1}, {"tap0", 2}});
    EXPECT_EQ(machine.countedLinks(), tap);

    // So does a tap's beside another Ethernet link, and a VLAN's upon it.
    describe("eth0");
    describe("eth0.7");
    tree.write("sys/class/net/eth0.7/lower_eth0/uevent", "");
    tree.write("sys/class/net/tap0/tun_flags", "0x1002\n");
    list({{"eth0", 20}, {"tap0", 2}, {"eth0.7", 6}});
    tree.write("proc/net/route",
               "Iface\n" + defaultRoute("tap0") + defaultRoute("eth0") + defaultRoute("eth0.7"));
    machine.pass(61s);
    EXPECT_EQ(machine.countedLinks(), (Links{{"en1", {20, 21}}})); // the tap has its number until now
    route({"tap0"});
    machine.pass(61s);
    list({{"pod0", 1}, {"tap0", 2}});
    EXPECT_EQ(machine.countedLinks(), tap);

    // A tunnel's traffic is the Ethernet link's once more; alone it is the way out.
    tree.write("proc/net/ipv6_route",
               std::string(32, '0') + " 00 " + std::string(32, '0') + " 00 " + std::string(32, '0') +
                   " 00000400 00000001 00000000 00000001      wg0\n" + std::string(32, '0') + " 00 " +
                   std::string(32, '0') + " 00 " + std::string(32, '0') +
                   " ffffffff 00000001 00000000 00200200       lo\n");
    describe("wg0", 65534);
    list({{"tap0", 2}, {"wg0", 5}});
    EXPECT_EQ(machine.countedLinks(), tap);
    route({});
    machine.pass(61s);
    EXPECT_EQ(machine.countedLinks(), (Links{{"en0", {5, 6}}}));
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
