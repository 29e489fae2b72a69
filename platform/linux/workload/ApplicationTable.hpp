// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/workload/DesktopEntries.hpp"
#include "platform/linux/workload/GroupReader.hpp"
#include "platform/linux/workload/ProcessReader.hpp"
#include "platform/linux/workload/ProportionalMemory.hpp"
#include "platform/machine/Workload.hpp"

#include <map>
#include <string>
#include <vector>

namespace vantor::platform::linux {

/// Puts groups and processes together to applications: by the group's name where they have one of their own,
/// else by the program that started them.
class ApplicationTable {
public:
    ApplicationTable(const KernelTree& tree, DesktopEntries& entries, ProcessReader& processes,
                     ProportionalMemory& memory, std::uint64_t ticksPerSecond, ListedFor purpose)
        : m_tree(tree),
          m_entries(entries),
          m_processes(processes),
          m_memory(memory),
          m_ticksPerSecond(ticksPerSecond),
          m_purpose(purpose) {}

    [[nodiscard]] std::vector<ApplicationUse> make(const std::vector<GroupUse>& groups);

private:
    void addGroup(const GroupUse& group, std::map<int, ProcessStat>& processes);
    [[nodiscard]] ProcessMemory memoryOf(int process, std::uint64_t start);
    void addLoose(const std::map<int, ProcessStat>& loose);
    ApplicationUse& application(const std::string& id, const std::string& otherName, bool isService);

    const KernelTree& m_tree;
    DesktopEntries& m_entries;
    ProcessReader& m_processes;
    ProportionalMemory& m_memory;
    std::uint64_t m_ticksPerSecond;
    ListedFor m_purpose;
    std::map<std::string, ApplicationUse> m_table; ///< by id or name
};

} // namespace vantor::platform::linux
