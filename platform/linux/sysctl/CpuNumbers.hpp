// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/sysctl/KernelText.hpp"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vantor::platform::linux::sysctl {

/// The numbers by which the phone's platform tells processors apart. Absent for processors that it has no
/// number for (RISC-V, s390…).
struct CpuNumbers {
    std::optional<std::uint32_t> type;
    std::optional<std::uint32_t> subtype;
    std::optional<std::uint32_t> family; ///< 0: one that the platform never ran on
    std::optional<bool> is64Bit;

    /// From the word of `uname -m` and the blocks of /proc/cpuinfo.
    [[nodiscard]] static CpuNumbers from(std::string_view machine, const std::vector<CpuinfoBlock>& cpuinfo);
};

} // namespace vantor::platform::linux::sysctl
