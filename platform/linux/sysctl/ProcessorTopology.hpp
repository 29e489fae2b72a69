// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/sysctl/KernelText.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vantor::platform::linux::sysctl {

/// The processors (hardware threads) of one speed.
struct PerformanceLevel {
    CpuList present;
    CpuList online;
};

/// The processors of a machine, from /sys/devices/system/cpu, and from /proc/cpuinfo where a container hides
/// that folder. A machine that shows neither has empty lists.
class ProcessorTopology {
public:
    /// `machine` is the machine's word, as `uname -m` prints it.
    ProcessorTopology(const KernelTree& tree, std::string_view machine);

    [[nodiscard]] const CpuList& possible() const { return m_possible; } ///< slots that the kernel has set up
    [[nodiscard]] const CpuList& present() const { return m_present; }
    [[nodiscard]] const CpuList& online() const { return m_online; }

    /// The levels, the fastest first; one on most machines. Hybrid x86 processors list theirs by kind of core
    /// under /sys/devices; elsewhere processors of the same `cpu_capacity` are one level.
    [[nodiscard]] std::vector<PerformanceLevel> levels() const;

    /// The cores behind some processors that are online; absent where the system does not tell which
    /// processors share one.
    [[nodiscard]] std::optional<unsigned> cores(const CpuList& online) const;

    /// The cores of a level with those that are offline. Their processors' siblings are not listed: they
    /// count as many to a core as the level's online ones, and as none where threads were switched off.
    [[nodiscard]] std::optional<unsigned> coresInAll(const PerformanceLevel& level) const;

    /// The packages (sockets) that are in use; absent where the system does not tell.
    [[nodiscard]] std::optional<unsigned> packages() const;

    /// The highest frequency that one of the online processors may run at, in Hz; where the kernel does not
    /// steer frequencies, the one it measured. Absent where it tells neither.
    [[nodiscard]] std::optional<std::uint64_t> frequency(const std::vector<CpuinfoBlock>& cpuinfo) const;

private:
    [[nodiscard]] std::string coreOf(unsigned processor) const;
    [[nodiscard]] std::vector<PerformanceLevel> levelsByKind() const;
    [[nodiscard]] std::vector<PerformanceLevel> levelsByCapacity() const;
    [[nodiscard]] std::optional<std::uint64_t> capacityOf(unsigned processor) const;

    const KernelTree& m_tree;
    bool m_isX86;
    std::vector<CpuinfoBlock> m_cpuinfo; ///< read where /sys tells nothing
    CpuList m_possible;
    CpuList m_present;
    CpuList m_online;
};

/// The caches of the first processor of a level. Bytes of one cache; absent where the system does not tell.
struct ProcessorCaches {
    std::optional<std::uint64_t> l1Instruction;
    std::array<std::optional<std::uint64_t>, 3> data; ///< or for both, of the first level to the third
    std::array<std::size_t, 3> sharing{};             ///< online processors behind such a cache; 0: not told

    [[nodiscard]] static ProcessorCaches read(const KernelTree& tree, const PerformanceLevel& level);
};

} // namespace vantor::platform::linux::sysctl
