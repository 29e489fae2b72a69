// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/workload/WorkText.hpp"

#include <sys/types.h>

#include <map>
#include <string>

namespace vantor::platform::linux {

/// A user's processes by number, without kernel threads, and without the memory that only some are asked for.
[[nodiscard]] std::map<int, ProcessStat> readProcesses(const KernelTree& tree, uid_t user);

/// A process's memory; none for one that ended meanwhile.
[[nodiscard]] ProcessMemory readProcessMemory(const KernelTree& tree, int process);

/// The name of the file that a process runs, without its folders; its own name where the link cannot be read.
[[nodiscard]] std::string programOf(const KernelTree& tree, int process, const ProcessStat& stat);

/// The id of the Flatpak application that a process belongs to; empty for any other.
[[nodiscard]] std::string flatpakOf(const KernelTree& tree, int process);

/// The process that stands for its application: the topmost ancestor among these processes below a session's
/// leader. A shell in a terminal leads a session of its own, so that what runs in it stands for itself.
[[nodiscard]] int applicationLeader(const std::map<int, ProcessStat>& processes, int process);

} // namespace vantor::platform::linux
