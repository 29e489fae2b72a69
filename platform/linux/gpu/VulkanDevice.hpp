// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux::gpu {

/// A device as its Vulkan driver describes it.
struct VulkanDevice {
    MTLDevice figures;
    bool isSoftware = false; ///< draws on the processor, whose memory it then shows as its own
    bool operator==(const VulkanDevice&) const = default;
};

/// The first device that the Vulkan loader lists, software renderers last. Opens the loader and every driver:
/// only for a process that may crash or hang. Absent without a loader, a driver or a device.
[[nodiscard]] std::optional<VulkanDevice> firstVulkanDevice();

/// One device as bytes for a pipe, and back; absent where they are not what `encoded` gives.
[[nodiscard]] std::string encoded(const VulkanDevice& device);
[[nodiscard]] std::optional<VulkanDevice> decoded(std::string_view bytes);

} // namespace vantor::platform::linux::gpu
