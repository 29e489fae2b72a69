// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vantor::platform::linux {

/// A control group that holds processes, below the user's own service manager.
struct GroupUse {
    std::string path;                ///< below user@UID.service: "app.slice/app-org.x-1.scope"
    std::uint64_t memory = 0;        ///< bytes: anonymous and shared memory
    std::uint64_t swap = 0;          ///< bytes
    std::uint64_t processorTime = 0; ///< microseconds since it was made, of processes that ended too
    std::vector<int> processes;
};

/// The groups of a user's service manager in the second version of control groups
/// (Documentation/admin-guide/cgroup-v2.rst); none where the machine has no such hierarchy, or one that does
/// not count memory. Bounded: 8 levels, 4,096 groups.
[[nodiscard]] std::vector<GroupUse> readGroups(const KernelTree& tree, uid_t user);

} // namespace vantor::platform::linux
