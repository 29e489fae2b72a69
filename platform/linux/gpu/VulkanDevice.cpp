// SPDX-License-Identifier: MIT
#include "platform/linux/gpu/VulkanDevice.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <vector>
#define VK_NO_PROTOTYPES
#include <vulkan/vulkan.h>

namespace vantor::platform::linux::gpu {

namespace {

/// The loader's functions are looked up by name: nothing links to it.
class Vulkan {
public:
    explicit Vulkan(PFN_vkGetInstanceProcAddr lookUp) : m_lookUp(lookUp) {
        VkApplicationInfo application{};
        application.sType = VK_STRUCTURE_TYPE_APPLICATION_INFO;
        application.apiVersion = VK_API_VERSION_1_1;
        VkInstanceCreateInfo wanted{};
        wanted.sType = VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO;
        wanted.pApplicationInfo = &application;
        const auto create = function<PFN_vkCreateInstance>("vkCreateInstance");
        if (create == nullptr || create(&wanted, nullptr, &m_instance) != VK_SUCCESS) {
            m_instance = VK_NULL_HANDLE;
        }
    }

    [[nodiscard]] std::vector<VkPhysicalDevice> devices() const {
        const auto enumerate = function<PFN_vkEnumeratePhysicalDevices>("vkEnumeratePhysicalDevices");
        std::uint32_t count = 0;
        if (m_instance == VK_NULL_HANDLE || enumerate == nullptr ||
            enumerate(m_instance, &count, nullptr) != VK_SUCCESS) {
            return {};
        }
        std::vector<VkPhysicalDevice> result(count);
        const VkResult filled = enumerate(m_instance, &count, result.data());
        result.resize(filled == VK_SUCCESS || filled == VK_INCOMPLETE ? count : 0);
        return result;
    }

    template<class F>
    [[nodiscard]] F function(const char* name) const {
        return reinterpret_cast<F>(m_lookUp(m_instance, name));
    }

private:
    PFN_vkGetInstanceProcAddr m_lookUp;
    VkInstance m_instance = VK_NULL_HANDLE; // never destroyed: the process ends with the answer
};

VkPhysicalDeviceProperties propertiesOf(const Vulkan& vulkan, VkPhysicalDevice device) {
    VkPhysicalDeviceProperties result{};
    const auto get = vulkan.function<PFN_vkGetPhysicalDeviceProperties>("vkGetPhysicalDeviceProperties");
    if (get != nullptr) {
        get(device, &result);
    }
    return result;
}

bool tellsUse(const Vulkan& vulkan, VkPhysicalDevice device) {
    const auto enumerate =
        vulkan.function<PFN_vkEnumerateDeviceExtensionProperties>("vkEnumerateDeviceExtensionProperties");
    std::uint32_t count = 0;
    if (enumerate == nullptr || enumerate(device, nullptr, &count, nullptr) != VK_SUCCESS) {
        return false;
    }
    std::vector<VkExtensionProperties> all(count);
    enumerate(device, nullptr, &count, all.data());
    return std::ranges::any_of(all, [](const VkExtensionProperties& each) {
        return std::strcmp(each.extensionName, VK_EXT_MEMORY_BUDGET_EXTENSION_NAME) == 0;
    });
}

/// The largest heap of the device's own, and what the driver says is in use there.
void fillMemory(const Vulkan& vulkan, VkPhysicalDevice device, MTLDevice& figures) {
    VkPhysicalDeviceMemoryBudgetPropertiesEXT use{};
    use.sType = VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_MEMORY_BUDGET_PROPERTIES_EXT;
    VkPhysicalDeviceMemoryProperties2 memory{};
    memory.sType = VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_MEMORY_PROPERTIES_2;
    memory.pNext = tellsUse(vulkan, device) ? &use : nullptr;
    const auto extended =
        vulkan.function<PFN_vkGetPhysicalDeviceMemoryProperties2>("vkGetPhysicalDeviceMemoryProperties2");
    const auto plain =
        vulkan.function<PFN_vkGetPhysicalDeviceMemoryProperties>("vkGetPhysicalDeviceMemoryProperties");
    if (extended != nullptr && propertiesOf(vulkan, device).apiVersion >= VK_API_VERSION_1_1) {
        extended(device, &memory);
    } else if (plain != nullptr) {
        plain(device, &memory.memoryProperties);
    }
    for (std::uint32_t i = 0; i < memory.memoryProperties.memoryHeapCount; ++i) {
        const VkMemoryHeap& heap = memory.memoryProperties.memoryHeaps[i];
        const bool own = (heap.flags & VK_MEMORY_HEAP_DEVICE_LOCAL_BIT) != 0;
        if (own && heap.size > figures.maxBufferLength) {
            figures.maxBufferLength = heap.size;
            figures.currentAllocatedSize = use.heapUsage[i];
        }
    }
}

} // namespace

std::optional<VulkanDevice> firstVulkanDevice() {
    void* const loader = ::dlopen("libvulkan.so.1", RTLD_NOW | RTLD_LOCAL);
    const auto lookUp =
        loader == nullptr
            ? nullptr
            : reinterpret_cast<PFN_vkGetInstanceProcAddr>(::dlsym(loader, "vkGetInstanceProcAddr"));
    if (lookUp == nullptr) {
        return std::nullopt;
    }
    const Vulkan vulkan(lookUp);
    std::vector<VkPhysicalDevice> devices = vulkan.devices();
    if (devices.empty()) {
        return std::nullopt;
    }
    std::ranges::stable_partition(devices, [&](VkPhysicalDevice each) {
        return propertiesOf(vulkan, each).deviceType != VK_PHYSICAL_DEVICE_TYPE_CPU;
    });
    const VkPhysicalDeviceProperties properties = propertiesOf(vulkan, devices.front());
    VulkanDevice result;
    result.isSoftware = properties.deviceType == VK_PHYSICAL_DEVICE_TYPE_CPU;
    result.figures.name = properties.deviceName;
    result.figures.hasUnifiedMemory =
        result.isSoftware || properties.deviceType == VK_PHYSICAL_DEVICE_TYPE_INTEGRATED_GPU;
    fillMemory(vulkan, devices.front(), result.figures);
    return result;
}

} // namespace vantor::platform::linux::gpu
