// SPDX-License-Identifier: MIT
#include "platform/linux/gpu/VulkanDevice.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace vantor::platform::linux::gpu {

std::string encoded(const MTLDevice& device) {
    return std::to_string(device.maxBufferLength) + ' ' + std::to_string(device.currentAllocatedSize) + ' ' +
           (device.hasUnifiedMemory.value_or(true) ? '1' : '0') + ' ' + device.name;
}

std::optional<MTLDevice> decoded(std::string_view bytes) {
    std::array<std::uint64_t, 3> numbers{};
    for (std::uint64_t& number : numbers) {
        const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), number);
        if (error != std::errc() || end == bytes.data() + bytes.size() || *end != ' ') {
            return std::nullopt;
        }
        bytes.remove_prefix(static_cast<std::size_t>(end - bytes.data()) + 1);
    }
    return MTLDevice{std::string(bytes), numbers[0], numbers[1], numbers[2] != 0};
}

} // namespace vantor::platform::linux::gpu
