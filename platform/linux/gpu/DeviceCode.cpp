// SPDX-License-Identifier: MIT
#include "platform/linux/gpu/VulkanDevice.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace vantor::platform::linux::gpu {

std::string encoded(const VulkanDevice& device) {
    const MTLDevice& figures = device.figures;
    return std::to_string(figures.maxBufferLength) + ' ' + std::to_string(figures.currentAllocatedSize) +
           ' ' + (figures.hasUnifiedMemory.value_or(true) ? '1' : '0') + ' ' +
           (device.isSoftware ? '1' : '0') + ' ' + figures.name;
}

std::optional<VulkanDevice> decoded(std::string_view bytes) {
    std::array<std::uint64_t, 4> numbers{};
    for (std::uint64_t& number : numbers) {
        const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
        if (error != std::errc() || end == bytes.data() + bytes.size() || *end != ' ') {
            return std::nullopt;
        }
        bytes.remove_prefix(static_cast<std::size_t>(end - bytes.data()) + 1);
    }
    return VulkanDevice{{std::string(bytes), numbers[0], numbers[1], numbers[2] != 0}, numbers[3] != 0};
}

} // namespace vantor::platform::linux::gpu
