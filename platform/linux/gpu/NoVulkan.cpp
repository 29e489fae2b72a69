// SPDX-License-Identifier: MIT
// Takes the place of VulkanDevice.cpp where Vulkan's headers were not there to build it.
#include "platform/linux/gpu/VulkanDevice.hpp"

namespace vantor::platform::linux::gpu {

std::optional<VulkanDevice> firstVulkanDevice() {
    return std::nullopt;
}

} // namespace vantor::platform::linux::gpu
