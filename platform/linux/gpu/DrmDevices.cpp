// SPDX-License-Identifier: MIT
#include "platform/linux/gpu/DrmDevices.hpp"

#include "platform/linux/kernel/Assignments.hpp"
#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
#include <cstdint>

namespace vantor::platform::linux::gpu {

namespace {

std::uint64_t bytesIn(const KernelTree& tree, const std::string& file) {
    return numberFrom(tree.line(file).value_or("")).value_or(0);
}

std::string lower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

std::string deviceName(const KernelTree& tree, std::string_view uevent) {
    const std::string id = lower(ueventValue(uevent, "PCI_ID")); // "8086:46a6"
    const std::size_t colon = id.find(':');
    if (colon == std::string::npos) {
        const std::string_view driver = ueventValue(uevent, "DRIVER");
        return driver.empty() ? "GPU" : std::string(driver) + " GPU";
    }
    for (const char* list : {"usr/share/misc/pci.ids", "usr/share/hwdata/pci.ids"}) {
        if (auto name = pciName(tree.read(list).text, id.substr(0, colon), id.substr(colon + 1))) {
            return *std::move(name);
        }
    }
    return "GPU " + id;
}

std::optional<unsigned> cardNumber(std::string_view name) {
    constexpr std::string_view start = "card";
    const auto number = name.starts_with(start) ? numberFrom(name.substr(start.size())) : std::nullopt;
    return number ? std::optional(static_cast<unsigned>(*number)) : std::nullopt; // not "card0-DP-1"
}

DrmDevice readCard(const KernelTree& tree, const std::string& device, unsigned number) {
    const std::string uevent = tree.read(device + "/uevent").text;
    const std::string_view slot = ueventValue(uevent, "PCI_SLOT_NAME"); // "0000:00:02.0"
    DrmDevice result;
    result.number = number;
    result.suspended = tree.line(device + "/power/runtime_status") == "suspended";
    result.boots = tree.line(device + "/boot_vga") == "1";
    result.onRootBus = slot.empty() || (slot.size() > 7 && slot.substr(4, 4) == ":00:");
    result.figures.name = deviceName(tree, uevent);
    result.figures.maxBufferLength = bytesIn(tree, device + "/mem_info_vram_total"); // amdgpu
    result.figures.currentAllocatedSize = bytesIn(tree, device + "/mem_info_vram_used");
    return result;
}

} // namespace

std::vector<DrmDevice> readDrmDevices(const KernelTree& tree) {
    std::vector<DrmDevice> result;
    const std::string drm = "sys/class/drm";
    Folder folder(tree.path(drm));
    while (const char* const name = folder.next()) {
        const std::string device = drm + '/' + name + "/device";
        const std::optional<unsigned> number = cardNumber(name);
        if (number && tree.exists(device)) {
            result.push_back(readCard(tree, device, *number));
        }
    }
    std::ranges::sort(result, {}, &DrmDevice::number);
    return result;
}

/// Vendors start their line with four digits and two blanks; their devices follow, one tab further in.
std::optional<std::string> pciName(std::string_view list, std::string_view vendor, std::string_view device) {
    bool inside = false;
    while (!list.empty()) {
        const std::string_view line = takeUntil(list, '\n');
        if (!line.empty() && line.front() != '\t' && line.front() != '#') {
            inside = line.starts_with(std::string(vendor) + "  ");
        } else if (inside && line.starts_with("\t" + std::string(device) + "  ")) {
            return std::string(line.substr(device.size() + 3));
        }
    }
    return std::nullopt;
}

} // namespace vantor::platform::linux::gpu
