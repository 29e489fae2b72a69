// SPDX-License-Identifier: MIT
#include "platform/linux/workload/LinuxWorkload.hpp"

#include "platform/linux/workload/ApplicationTable.hpp"
#include "platform/linux/workload/GroupReader.hpp"
#include "platform/linux/workload/ProcessReader.hpp"
#include "platform/linux/workload/ProcessorStateReader.hpp"
#include "platform/linux/workload/WorkText.hpp"

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
    return ApplicationTable(m_options.tree, m_entries, m_options.ticksPerSecond)
        .make(readGroups(m_options.tree, m_options.user), readProcesses(m_options.tree, m_options.user));
}

} // namespace vantor::platform::linux
