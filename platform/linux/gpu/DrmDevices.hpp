// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"
#include "platform/linux/kernel/KernelTree.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux::gpu {

/// A graphics card as /sys/class/drm shows it. Reading these files wakes no card.
struct DrmDevice {
    unsigned number = 0;    ///< of "card0"
    bool suspended = false; ///< powered down until somebody uses it
    bool boots = false;     ///< the firmware's screen is on it
    bool onRootBus = false; ///< no PCI card of its own: part of the processor or the board
    MTLDevice figures;      ///< memory 0 where the driver does not tell
};

/// The cards, by number.
[[nodiscard]] std::vector<DrmDevice> readDrmDevices(const KernelTree& tree);

/// The name of a PCI device in the list that distributions ship as pci.ids; absent where it is not there.
[[nodiscard]] std::optional<std::string> pciName(std::string_view list, std::string_view vendor,
                                                 std::string_view device);

} // namespace vantor::platform::linux::gpu
