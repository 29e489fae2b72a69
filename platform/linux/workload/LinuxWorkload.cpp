// SPDX-License-Identifier: MIT
#include "platform/linux/workload/LinuxWorkload.hpp"

#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/workload/ApplicationTable.hpp"
#include "platform/linux/workload/GroupReader.hpp"
#include "platform/linux/workload/ProcessReader.hpp"
#include "platform/linux/workload/ProcessorStateReader.hpp"
#include "platform/linux/workload/WorkText.hpp"
#include "platform/time/DispatchQueue.hpp"

#include <functional>
#include <set>

namespace vantor::platform::linux {

std::optional<Pressure> LinuxWorkload::memoryPressure() {
    return parsePressure(m_options.tree.read("proc/pressure/memory").text);
}

std::optional<Pressure> LinuxWorkload::processorPressure() {
    return parsePressure(m_options.tree.read("proc/pressure/cpu").text);
}

ProcessorState LinuxWorkload::processorState() {
    return readProcessorState(m_options.tree);
}

std::optional<SwapSpace> LinuxWorkload::swapSpace() {
    return parseSwapSpace(m_options.tree.read("proc/meminfo").text);
}

std::vector<ApplicationUse> LinuxWorkload::applications(ListedFor purpose) {
    const std::lock_guard lock(m_mutex);
    if (purpose == ListedFor::memory) {
        m_memory->beginRound();
    }
    std::vector<ApplicationUse> uses =
        ApplicationTable(m_options.tree, m_entries, m_processes, *m_memory, m_options.ticksPerSecond, purpose)
            .make(m_groups.read());
    if (purpose == ListedFor::memory && m_memory->wantsCount()) {
        dispatch_async(dispatch_get_global_queue(QOS_CLASS_DEFAULT),
                       [memory = m_memory] { memory->countFew(); });
    }
    return uses;
}

/// A group's memory.peak (Linux 5.19) is the application's where all of it is in that one.
ApplicationDetail LinuxWorkload::detail(const ApplicationUse& application) {
    ApplicationDetail detail;
    std::set<std::string> groups;
    for (const ProcessIdentity& process : application.processes) {
        const std::string number = std::to_string(process.number);
        const auto stat = parseProcessStat(m_options.tree.read("proc/" + number + "/stat").text);
        if (stat && stat->start == process.start) {
            const ProcessMemory memory = readProcessMemory(m_options.tree, process.number);
            detail.processes.push_back(
                {process, memory.memory, memory.swap, stat->ticks * 1'000'000 / m_options.ticksPerSecond});
            groups.insert(groupOf(m_options.tree, m_options.user, number));
        }
    }
    std::ranges::stable_sort(detail.processes, std::ranges::greater(), &ProcessUse::memory);
    if (groups.size() == 1 && !groups.begin()->empty()) {
        const auto peak =
            m_options.tree.line(managerFolder(m_options.user) + '/' + *groups.begin() + "/memory.peak");
        detail.peak = peak ? numberFrom(*peak) : std::nullopt;
    }
    return detail;
}

} // namespace vantor::platform::linux
