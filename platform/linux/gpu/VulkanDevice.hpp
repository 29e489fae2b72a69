// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux::gpu {

/// The first device that the Vulkan loader lists, software renderers last. Opens the loader and every driver:
/// only for a process that may crash or hang. Absent without a loader, a driver or a device.
[[nodiscard]] std::optional<MTLDevice> firstVulkanDevice();

/// One device as bytes for a pipe, and back; absent where they are not what `encoded` gives.
[[nodiscard]] std::string encoded(const MTLDevice& device);
[[nodiscard]] std::optional<MTLDevice> decoded(std::string_view bytes);

} // namespace vantor::platform::linux::gpu
