// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/sysctl/KernelText.hpp"
#include "platform/linux/sysctl/ProcessorTopology.hpp"

#include <optional>
#include <string>
#include <vector>

namespace vantor::platform::linux::sysctl {

/// The processor's name as people know it: the one that /proc/cpuinfo has, and on ARM, where the kernel tells
/// numbers only, the design's ("Cortex-A76"). Several designs stand in the order of the levels, the fastest
/// first, with " + " between them. Absent where the kernel tells neither a name nor numbers that are known.
[[nodiscard]] std::optional<std::string> processorName(const std::vector<CpuinfoBlock>& cpuinfo,
                                                       const std::vector<PerformanceLevel>& levels);

} // namespace vantor::platform::linux::sysctl
