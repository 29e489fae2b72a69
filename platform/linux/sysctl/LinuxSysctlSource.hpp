// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/sysctl/SysctlSource.hpp"

#include <cstdint>
#include <functional>
#include <string>

namespace vantor::platform::linux::sysctl {

class ProcessorTopology;

/// What only system calls tell.
struct SystemCalls {
    struct Names {
        std::string sysname, nodename, release, version, machine;
    };
    std::function<Names()> uname;            ///< uname(2)
    std::function<std::uint64_t()> pageSize; ///< bytes
};

/// The platform's keys from /proc and /sys, read afresh every time:
///
/// - hw.*: counts, caches and levels from /sys/devices/system/cpu, memory from /proc/meminfo, the model from
///   the firmware's tables. hw.ncpu counts what the kernel is set up for (`nproc --all`), logicalcpu_max what
///   is present, logicalcpu and activecpu what is online. hw.l*cachesize is one cache of the fastest level.
/// - kern.*: /proc/sys/kernel, /proc/cmdline and os-release(5): osproductversion and osproductversioncompat
///   are VERSION_ID, osreleasetype RELEASE_TYPE, osrevision BUILD_ID.
/// - every other key: the file under /proc/sys, points as slashes and slashes as points, as sysctl(8) has it.
class LinuxSysctlSource final : public SysctlSource {
public:
    LinuxSysctlSource(std::string root, SystemCalls calls);

    [[nodiscard]] SysctlAnswer read(std::string_view key) override;

private:
    [[nodiscard]] SysctlAnswer hardware(std::string_view name) const;
    [[nodiscard]] SysctlAnswer processorNumber(std::string_view name) const;
    [[nodiscard]] SysctlAnswer counts(std::string_view name) const;
    [[nodiscard]] SysctlAnswer level(std::string_view name) const;
    [[nodiscard]] SysctlAnswer model() const;
    [[nodiscard]] SysctlAnswer kernel(std::string_view name) const;
    [[nodiscard]] SysctlAnswer osRelease(std::string_view field) const;
    [[nodiscard]] SysctlAnswer procSys(std::string_view key) const;

    KernelTree m_tree;
    SystemCalls m_calls;
};

} // namespace vantor::platform::linux::sysctl
