// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/sysctl/ProcessorTopology.hpp"
#include "platform/sysctl/SysctlSource.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vantor::platform::linux::sysctl {

/// What only system calls tell.
struct SystemCalls {
    struct Names {
        std::string sysname, nodename, release, version, machine;
    };
    std::function<Names()> uname;            ///< uname(2)
    std::function<std::uint64_t()> pageSize; ///< bytes
};

/// Where a key's value comes from.
struct Sources {
    const KernelTree& tree;
    const SystemCalls& calls;

    [[nodiscard]] ProcessorTopology topology() const { return {tree, calls.uname().machine}; }
};

/// A key of the platform's own, and how its value is found. The tables are what can be read and what is
/// listed.
struct NamedKey {
    std::string_view name;
    SysctlAnswer (*read)(const Sources& sources);
};
[[nodiscard]] std::span<const NamedKey> processorKeys(); ///< hw.*, machdep.cpu.*
[[nodiscard]] std::span<const NamedKey> systemKeys();    ///< hw.*, kern.*, vm.*

/// A key below "hw.perflevelN.", where every number has 4 bytes.
struct LevelKey {
    std::string_view name;
    SysctlAnswer (*read)(const Sources& sources, const ProcessorTopology& topology,
                         const PerformanceLevel& level);
};
[[nodiscard]] std::span<const LevelKey> levelKeys();

// A value that was not found is a key that is not there.
[[nodiscard]] SysctlAnswer textAnswer(std::optional<std::string> found); ///< nor is an empty one
[[nodiscard]] SysctlAnswer number4(std::optional<std::uint64_t> found);
[[nodiscard]] SysctlAnswer number8(std::optional<std::uint64_t> found);

} // namespace vantor::platform::linux::sysctl
