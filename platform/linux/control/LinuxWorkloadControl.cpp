// SPDX-License-Identifier: MIT
#include "platform/linux/control/LinuxWorkloadControl.hpp"

#include "platform/linux/control/ProcessHold.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/workload/GroupReader.hpp"
#include "platform/linux/workload/ProcessReader.hpp"
#include "platform/linux/workload/WorkText.hpp"

#include <sys/stat.h>

#include <utility>

namespace vantor::platform::linux {

std::optional<MemoryLevel> LinuxWorkloadControl::memoryLevel() {
    return parseMemoryLevel(m_options.tree.read("proc/meminfo").text);
}

bool LinuxWorkloadControl::hasGroups() {
    const std::string controllers = m_options.tree.line("sys/fs/cgroup/cgroup.controllers").value_or("");
    std::string_view rest = controllers;
    for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
        if (word == "memory") {
            return true;
        }
    }
    return false;
}

std::string LinuxWorkloadControl::reclaimPath(const std::string& group) const {
    return m_options.tree.path(managerFolder(m_options.user) + '/' + group + "/memory.reclaim");
}

std::vector<ReclaimableGroup> LinuxWorkloadControl::reclaimableGroups() {
    const std::string own = groupOf(m_options.tree, m_options.user, "self");
    std::vector<ReclaimableGroup> groups;
    for (const GroupUse& group : GroupReader(m_options.tree, m_options.user).read()) {
        const bool isApplications =
            group.path.starts_with("app.slice/") || group.path.starts_with("background.slice/");
        if (isApplications && group.isLeaf && group.path != own &&
            ::access(reclaimPath(group.path).c_str(), W_OK) == 0) {
            groups.push_back({group.path, group.inactive, group.processorTime});
        }
    }
    return groups;
}

std::optional<ReclaimableGroup> LinuxWorkloadControl::reclaimableGroup(const std::string& path) {
    const std::optional<GroupUse> group = readGroup(m_options.tree, m_options.user, path);
    return group ? std::optional(ReclaimableGroup{path, group->inactive, group->processorTime})
                 : std::nullopt;
}

ReclaimAnswer LinuxWorkloadControl::reclaim(const std::string& path, std::uint64_t bytes) {
    return m_reclaim.ask(reclaimPath(path), bytes);
}

int LinuxWorkloadControl::ownNumber() {
    return ::getpid();
}

std::optional<RunningProcess> LinuxWorkloadControl::process(int number) {
    const std::string name = std::to_string(number);
    struct stat about {};
    if (::stat(m_options.tree.path("proc/" + name).c_str(), &about) != 0) {
        return std::nullopt;
    }
    const std::optional<ProcessStat> stat =
        parseProcessStat(m_options.tree.read("proc/" + name + "/stat").text);
    if (!stat) {
        return std::nullopt;
    }
    return RunningProcess{.identity = {number, stat->start, stat->name},
                          .parent = stat->parent,
                          .session = stat->session,
                          .isThisUsers = about.st_uid == m_options.user,
                          .program = programOf(m_options.tree, number, *stat),
                          .group = groupOf(m_options.tree, m_options.user, name)};
}

std::vector<int> LinuxWorkloadControl::processesIn(const std::string& group) {
    return parseProcessNumbers(
        m_options.tree.read(managerFolder(m_options.user) + '/' + group + "/cgroup.procs").text);
}

std::unique_ptr<ProcessHandle> LinuxWorkloadControl::open(const RunningProcess& process) {
    auto hold = std::make_unique<ProcessHold>(process.identity.number);
    const std::optional<RunningProcess> now =
        hold->isOpen() ? this->process(process.identity.number) : std::nullopt;
    const bool isSame = now && now->identity.start == process.identity.start && now->group == process.group &&
                        now->isThisUsers;
    return isSame ? std::move(hold) : nullptr;
}

} // namespace vantor::platform::linux
