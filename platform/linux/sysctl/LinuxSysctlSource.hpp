// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/sysctl/NamedKeys.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux::sysctl {

/// The platform's keys from /proc and /sys, read afresh every time:
///
/// - hw.*: counts, caches and levels from /sys/devices/system/cpu, memory from /proc/meminfo, the model from
///   the firmware's tables. hw.ncpu counts what the kernel is set up for (`nproc --all`), logicalcpu_max what
///   is present, logicalcpu and activecpu what is online. hw.l*cachesize is one cache of the fastest level.
///   hw.cpufrequency is the highest that the kernel would set, in Hz.
/// - machdep.cpu.brand_string: the processor's name from /proc/cpuinfo, or by its part number.
/// - kern.*: /proc/sys/kernel, /proc/cmdline, /proc/uptime (seconds) and os-release(5): osproductname is
///   PRETTY_NAME, osproductversion and osproductversioncompat VERSION_ID, osreleasetype RELEASE_TYPE,
///   osrevision BUILD_ID.
/// - vm.swap_total: the sum of /proc/swaps, in bytes.
/// - every other key: the file under /proc/sys, points as slashes and slashes as points, as sysctl(8) has it.
class LinuxSysctlSource final : public SysctlSource {
public:
    LinuxSysctlSource(std::string root, SystemCalls calls);

    [[nodiscard]] SysctlAnswer read(std::string_view key) override;
    [[nodiscard]] std::vector<std::string> keys(std::string_view name) override;

private:
    [[nodiscard]] SysctlAnswer level(std::string_view name) const;
    [[nodiscard]] SysctlAnswer procSys(std::string_view key) const;

    KernelTree m_tree;
    SystemCalls m_calls;
};

} // namespace vantor::platform::linux::sysctl
