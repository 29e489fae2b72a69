// SPDX-License-Identifier: MIT
#include "platform/linux/workload/LinuxWorkload.hpp"

#include "platform/linux/workload/ApplicationTable.hpp"
#include "platform/linux/workload/GroupReader.hpp"
#include "platform/linux/workload/ProcessReader.hpp"
#include "platform/linux/workload/ProcessorStateReader.hpp"
#include "platform/linux/workload/WorkText.hpp"
#include "platform/time/DispatchQueue.hpp"

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

std::vector<ApplicationUse> LinuxWorkload::applications() {
    const std::lock_guard lock(m_mutex);
    m_memory->beginRound();
    std::vector<ApplicationUse> uses =
        ApplicationTable(m_options.tree, m_entries, *m_memory, m_options.ticksPerSecond)
            .make(readGroups(m_options.tree, m_options.user), readProcesses(m_options.tree, m_options.user));
    if (m_memory->wantsCount()) {
        dispatch_async(dispatch_get_global_queue(QOS_CLASS_DEFAULT),
                       [memory = m_memory] { memory->countFew(); });
    }
    return uses;
}

} // namespace vantor::platform::linux
