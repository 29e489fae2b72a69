// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"
#include "platform/linux/gpu/VulkanDevice.hpp"
#include "platform/linux/kernel/KernelTree.hpp"

#include <functional>
#include <string>
#include <utility>

namespace vantor::platform::linux::gpu {

/// The default device: the one that a hardware driver for Vulkan describes; without such a driver the
/// kernel's own card, the one with the firmware's screen, else the first; without a card Vulkan's software
/// renderer, which is the processor. Where a card is powered down, Vulkan is not asked, since a driver would
/// wake it.
class LinuxDeviceSource final : public MTLDeviceSource {
public:
    using Query = std::function<std::optional<VulkanDevice>()>;

    LinuxDeviceSource(std::string root, Query vulkan)
        : m_tree(std::move(root)), m_vulkan(std::move(vulkan)) {}

    [[nodiscard]] std::optional<MTLDevice> systemDefaultDevice() override;

private:
    KernelTree m_tree;
    Query m_vulkan;
};

/// `firstVulkanDevice` in a child process, with two seconds to answer.
[[nodiscard]] std::optional<VulkanDevice> boundedVulkanDevice();

} // namespace vantor::platform::linux::gpu
