// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/workload/KeptFile.hpp"

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::platform::linux {

/// A control group that holds processes, below the user's own service manager.
struct GroupUse {
    std::string path;                ///< below user@UID.service: "app.slice/app-org.x-1.scope"
    std::uint64_t memory = 0;        ///< bytes: anonymous and shared memory
    std::uint64_t kernel = 0;        ///< bytes that the kernel holds for it: page tables, stacks, inodes
    std::uint64_t inactive = 0;      ///< bytes of the anonymous memory that were not touched lately
    std::uint64_t swap = 0;          ///< bytes
    std::uint64_t processorTime = 0; ///< microseconds since it was made, of processes that ended too
    std::vector<int> processes;
    bool isLeaf = true; ///< no group is below it
};

/// The folder of the user's service manager's own group, below a tree's root.
[[nodiscard]] std::string managerFolder(uid_t user);

/// The group that a process is in, by its path as in GroupUse; empty where it is elsewhere. `process` is its
/// number, or "self".
[[nodiscard]] std::string groupOf(const KernelTree& tree, uid_t user, const std::string& process);

/// A group by its path as in GroupUse; absent where it is gone, empty, or its memory is not counted. What is
/// below it is not looked at.
[[nodiscard]] std::optional<GroupUse> readGroup(const KernelTree& tree, uid_t user, const std::string& path);

/// The groups of a user's service manager in the second version of control groups
/// (Documentation/admin-guide/cgroup-v2.rst), which are asked for again and again. Their files stay open, as
/// far as there are not too many. Not for several threads at once.
class GroupReader {
public:
    GroupReader(KernelTree tree, uid_t user) : m_tree(std::move(tree)), m_user(user) {}

    /// None where the machine has no such hierarchy, or one that does not count memory. Bounded: 8 levels,
    /// 4,096 groups.
    [[nodiscard]] std::vector<GroupUse> read();
    /// One of them, as readGroup.
    [[nodiscard]] std::optional<GroupUse> groupAt(const std::string& path);

private:
    struct Files {
        KeptFile processes, memory, swap, processor;
        std::uint64_t round = 0;
    };
    bool visit(const std::string& path, std::size_t depth);

    const KernelTree m_tree;
    const uid_t m_user;
    std::map<std::string, Files> m_files; ///< by the group's path
    std::vector<GroupUse> m_groups;       ///< that were found so far
    std::vector<char> m_buffer;
    std::uint64_t m_round = 0;
    bool m_isLive = false; ///< made by the kernel: files may stay open
};

} // namespace vantor::platform::linux
