// SPDX-License-Identifier: MIT
#include "platform/linux/gpu/LinuxDeviceSource.hpp"

#include "platform/linux/gpu/DrmDevices.hpp"
#include "platform/linux/gpu/VulkanDevice.hpp"
#include "platform/posix/BoundedChild.hpp"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace vantor::platform {

namespace linux::gpu {

namespace {

std::optional<MTLDevice> kernelsOwn(const std::vector<DrmDevice>& cards, bool oneSleeps) {
    if (cards.empty()) {
        return std::nullopt;
    }
    const auto booting = std::ranges::find_if(cards, &DrmDevice::boots);
    const DrmDevice& card = booting != cards.end() ? *booting : cards.front();
    MTLDevice device = card.figures;
    // The card that stays awake while another sleeps is the one inside the processor.
    device.hasUnifiedMemory = card.onRootBus || (oneSleeps && !card.suspended);
    return device;
}

} // namespace

std::optional<MTLDevice> LinuxDeviceSource::systemDefaultDevice() {
    const std::vector<DrmDevice> cards = readDrmDevices(m_tree);
    const bool oneSleeps = std::ranges::any_of(cards, &DrmDevice::suspended);
    const std::optional<VulkanDevice> vulkan = oneSleeps ? std::nullopt : m_vulkan();
    if (vulkan && !vulkan->isSoftware) {
        return vulkan->figures;
    }
    const std::optional<MTLDevice> own = kernelsOwn(cards, oneSleeps);
    return own || !vulkan ? own : vulkan->figures;
}

std::optional<VulkanDevice> boundedVulkanDevice() {
    const auto work = [] {
        // Layers that desktops slip into every Vulkan program have no business here.
        ::setenv("VK_LOADER_LAYERS_DISABLE", "~implicit~", 1);
        const std::optional<VulkanDevice> device = firstVulkanDevice();
        return device ? encoded(*device) : std::string();
    };
    const std::optional<std::string> answer = posix::runInChild(work, std::chrono::seconds(2));
    return answer ? decoded(*answer) : std::nullopt;
}

} // namespace linux::gpu

MTLDeviceSource& defaultMTLDeviceSource() {
    // Never destroyed: threads may still ask while the process ends.
    static auto& source = *new linux::gpu::LinuxDeviceSource("/", linux::gpu::boundedVulkanDevice);
    return source;
}

} // namespace vantor::platform
