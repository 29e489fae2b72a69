// SPDX-License-Identifier: MIT
#include "platform/linux/gpu/DrmDevices.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <system_error>

namespace vantor::platform::linux::gpu {

namespace fs = std::filesystem;

namespace {

std::string content(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string_view firstLine(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

/// The value of "NAME=value" in a uevent file.
std::string_view variable(std::string_view uevent, std::string_view name) {
    while (!uevent.empty()) {
        const std::string_view line = firstLine(uevent);
        if (line.starts_with(name) && line.substr(name.size()).starts_with('=')) {
            return line.substr(name.size() + 1);
        }
        uevent.remove_prefix(std::min(line.size() + 1, uevent.size()));
    }
    return {};
}

std::uint64_t bytesIn(const fs::path& path) {
    const std::string text = content(path);
    std::uint64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::string lower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) {
        return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

std::string deviceName(const fs::path& root, std::string_view uevent) {
    const std::string id = lower(variable(uevent, "PCI_ID")); // "8086:46a6"
    const std::size_t colon = id.find(':');
    if (colon == std::string::npos) {
        const std::string_view driver = variable(uevent, "DRIVER");
        return driver.empty() ? "GPU" : std::string(driver) + " GPU";
    }
    for (const char* list : {"usr/share/misc/pci.ids", "usr/share/hwdata/pci.ids"}) {
        if (auto name = pciName(content(root / list), id.substr(0, colon), id.substr(colon + 1))) {
            return *std::move(name);
        }
    }
    return "GPU " + id;
}

std::optional<unsigned> cardNumber(const std::string& name) {
    unsigned number = 0;
    const char* const last = name.data() + name.size();
    if (!name.starts_with("card")) {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(name.data() + 4, last, number);
    return error == std::errc() && end == last ? std::optional(number) : std::nullopt; // not "card0-DP-1"
}

DrmDevice readCard(const fs::path& root, const fs::path& card, unsigned number) {
    const fs::path device = card / "device";
    const std::string uevent = content(device / "uevent");
    const std::string_view slot = variable(uevent, "PCI_SLOT_NAME"); // "0000:00:02.0"
    DrmDevice result;
    result.number = number;
    result.suspended = firstLine(content(device / "power/runtime_status")) == "suspended";
    result.boots = firstLine(content(device / "boot_vga")) == "1";
    result.onRootBus = slot.empty() || (slot.size() > 7 && slot.substr(4, 4) == ":00:");
    result.figures.name = deviceName(root, uevent);
    result.figures.maxBufferLength = bytesIn(device / "mem_info_vram_total"); // amdgpu
    result.figures.currentAllocatedSize = bytesIn(device / "mem_info_vram_used");
    return result;
}

} // namespace

std::vector<DrmDevice> readDrmDevices(const fs::path& root) {
    std::vector<DrmDevice> result;
    std::error_code error;
    fs::directory_iterator entry(root / "sys/class/drm", error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const std::optional<unsigned> number = cardNumber(entry->path().filename().string());
        std::error_code missing;
        if (number && fs::exists(entry->path() / "device", missing)) {
            result.push_back(readCard(root, entry->path(), *number));
        }
    }
    std::ranges::sort(result, {}, &DrmDevice::number);
    return result;
}

/// Vendors start their line with four digits and two blanks; their devices follow, one tab further in.
std::optional<std::string> pciName(std::string_view list, std::string_view vendor, std::string_view device) {
    bool inside = false;
    while (!list.empty()) {
        const std::string_view line = firstLine(list);
        list.remove_prefix(std::min(line.size() + 1, list.size()));
        if (!line.empty() && line.front() != '\t' && line.front() != '#') {
            inside = line.starts_with(std::string(vendor) + "  ");
        } else if (inside && line.starts_with("\t" + std::string(device) + "  ")) {
            return std::string(line.substr(device.size() + 3));
        }
    }
    return std::nullopt;
}

} // namespace vantor::platform::linux::gpu
