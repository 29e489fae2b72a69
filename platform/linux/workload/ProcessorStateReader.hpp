// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/machine/Workload.hpp"

namespace vantor::platform::linux {

/// The processors' ticks and loads from /proc; their frequencies from /sys/devices/system/cpu/cpufreq, which
/// virtual machines mostly lack; their temperature from the sensors of /sys/class/hwmon that are known to be
/// a processor's. What a machine does not tell is absent.
[[nodiscard]] ProcessorState readProcessorState(const KernelTree& tree);

} // namespace vantor::platform::linux
