// SPDX-License-Identifier: MIT
#include "TestTree.hpp"
#include "platform/linux/gpu/DrmDevices.hpp"
#include "platform/linux/gpu/LinuxDeviceSource.hpp"
#include "platform/linux/gpu/VulkanDevice.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace vantor::platform::linux::gpu {
namespace {

using std::chrono::milliseconds;
using tests::TestTree;

/// A laptop as sysfs describes it: the graphics of the processor and a card that sleeps.
void makeLaptop(const TestTree& tree, const char* cardStatus) {
    tree.write("sys/class/drm/card1/device/uevent",
               "DRIVER=i915\nPCI_ID=8086:46A6\nPCI_SLOT_NAME=0000:00:02.0\n");
    tree.write("sys/class/drm/card1/device/power/runtime_status", "active\n");
    tree.write("sys/class/drm/card1/device/boot_vga", "1\n");
    tree.write("sys/class/drm/card1-eDP-1/device/power/runtime_status", "suspended\n");
    tree.write("sys/class/drm/card0/device/uevent",
               "DRIVER=amdgpu\nPCI_ID=1002:73FF\nPCI_SLOT_NAME=0000:03:00.0\n");
    tree.write("sys/class/drm/card0/device/power/runtime_status", cardStatus);
    tree.write("sys/class/drm/card0/device/mem_info_vram_total", "8573157376\n");
    tree.write("sys/class/drm/card0/device/mem_info_vram_used", "4096\n");
    tree.write("usr/share/misc/pci.ids",
               "# list\n1002  AMD\n\t73ff  Navi 23\n\t\t1002 73ff  Sub\n8086  Intel\n"
               "\t46a6  Alder Lake-P GT2\n");
}

TEST(LinuxDeviceSource, PrefersHardwareDriversThenTheKernelsCardThenSoftware) {
    const TestTree tree;
    const VulkanDevice hardware{{"a card", 1, 2, false}, false};
    const VulkanDevice software{{"a renderer", 3, 4, true}, true};
    std::optional<VulkanDevice> vulkan;
    int asked = 0;
    LinuxDeviceSource source(tree.root(), [&] {
        ++asked;
        return vulkan;
    });
    EXPECT_EQ(source.systemDefaultDevice(), std::nullopt);
    vulkan = software;
    EXPECT_EQ(source.systemDefaultDevice(), software.figures);
    vulkan = hardware;
    EXPECT_EQ(source.systemDefaultDevice(), hardware.figures); // a driver without a card of the kernel's

    makeLaptop(tree, "active\n");
    EXPECT_EQ(source.systemDefaultDevice(), hardware.figures);
    const MTLDevice ofTheProcessor{"Alder Lake-P GT2", 0, 0, true};
    const MTLDevice ofItsOwn{"Navi 23", 8573157376, 4096, false};
    for (const auto& noHardware : {std::optional<VulkanDevice>(), std::optional(software)}) {
        vulkan = noHardware;
        tree.write("sys/class/drm/card1/device/boot_vga", "1\n");
        EXPECT_EQ(source.systemDefaultDevice(), ofTheProcessor);
        tree.write("sys/class/drm/card1/device/boot_vga", "0\n");
        EXPECT_EQ(source.systemDefaultDevice(), ofItsOwn);
    }

    asked = 0;
    vulkan = hardware;
    makeLaptop(tree, "suspended\n");
    EXPECT_EQ(source.systemDefaultDevice(), ofTheProcessor);
    tree.write("sys/class/drm/card1/device/boot_vga", "0\n");
    EXPECT_EQ(source.systemDefaultDevice(), ofItsOwn);
    EXPECT_EQ(asked, 0); // a driver would have woken the card
}

TEST(LinuxDeviceSource, NamesCardsThatNoListKnows) {
    const TestTree tree;
    tree.write("sys/class/drm/card0/device/uevent", "DRIVER=panfrost\nOF_NAME=gpu\n");
    tree.write("sys/class/drm/card2/device/uevent", "PCI_ID=10DE:25A0\nPCI_SLOT_NAME=0000:01:00.0\n");
    const std::vector<DrmDevice> cards = readDrmDevices(KernelTree(tree.root()));
    ASSERT_EQ(cards.size(), 2U);
    EXPECT_EQ(cards[0].figures.name, "panfrost GPU");
    EXPECT_TRUE(cards[0].onRootBus);
    EXPECT_EQ(cards[1].figures.name, "GPU 10de:25a0");
    EXPECT_FALSE(cards[1].onRootBus);
}

TEST(DeviceCode, ComesBackFromThePipe) {
    for (const bool software : {false, true}) {
        const VulkanDevice device{{"A GPU\n2 3", 1ULL << 40, 5, !software}, software};
        EXPECT_EQ(decoded(encoded(device)), device);
    }
    for (const char* bad : {"", "1 2", "1 2 ", "1 2 1 0", "x 2 1 0 n"}) {
        EXPECT_EQ(decoded(bad), std::nullopt) << bad;
    }
}

} // namespace
} // namespace vantor::platform::linux::gpu
