// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"
#include "platform/linux/kernel/KernelTree.hpp"

#include <functional>
#include <string>
#include <utility>

namespace vantor::platform::linux::gpu {

/// The default device through Vulkan; but where a card is powered down, from the kernel's files alone, since
/// a Vulkan driver would wake it. The kernel's figures are those of the card with the firmware's screen, else
/// of the first one.
class LinuxDeviceSource final : public MTLDeviceSource {
public:
    using Query = std::function<std::optional<MTLDevice>()>;

    LinuxDeviceSource(std::string root, Query vulkan)
        : m_tree(std::move(root)), m_vulkan(std::move(vulkan)) {}

    [[nodiscard]] std::optional<MTLDevice> systemDefaultDevice() override;

private:
    KernelTree m_tree;
    Query m_vulkan;
};

/// `firstVulkanDevice` in a child process, with two seconds to answer.
[[nodiscard]] std::optional<MTLDevice> boundedVulkanDevice();

} // namespace vantor::platform::linux::gpu
