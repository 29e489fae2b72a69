// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedMachine.hpp"

namespace vantor::platform {

void SimulatedMachine::change(const std::function<void(SimulatedState& state)>& with) {
    const std::scoped_lock lock(m_mutex);
    with(m_state);
}

kern_return_t SimulatedMachine::hostPageSize(std::uint64_t& size) {
    return answer(MachineQuery::pageSize, [&](const SimulatedState& state) {
        if (state.pageSizeResult == KERN_SUCCESS) {
            size = state.pageSize;
        }
        return state.pageSizeResult;
    });
}

kern_return_t SimulatedMachine::hostVirtualMemory(vm_statistics64& record) {
    return answer(MachineQuery::virtualMemory, [&](const SimulatedState& state) {
        if (state.virtualMemoryResult == KERN_SUCCESS) {
            record = state.virtualMemory;
        }
        return state.virtualMemoryResult;
    });
}

kern_return_t SimulatedMachine::hostCpuLoad(host_cpu_load_info& record) {
    return answer(MachineQuery::cpuLoad, [&](const SimulatedState& state) {
        if (state.cpuLoadResult == KERN_SUCCESS) {
            record = state.cpuLoad;
        }
        return state.cpuLoadResult;
    });
}

std::uint64_t SimulatedMachine::physicalMemory() {
    return answer(MachineQuery::physicalMemory,
                  [](const SimulatedState& state) { return state.physicalMemory; });
}

bool SimulatedMachine::isiOSAppOnMac() {
    const std::scoped_lock lock(m_mutex);
    return m_state.isiOSAppOnMac;
}

std::optional<std::vector<InterfaceAddress>> SimulatedMachine::interfaceAddresses() {
    return answer(MachineQuery::interfaces, [](const SimulatedState& state) { return state.interfaces; });
}

std::shared_ptr<const std::vector<std::string>> SimulatedMachine::documentDirectories() {
    return answer(MachineQuery::documentDirectories, [](const SimulatedState& state) {
        return std::make_shared<const std::vector<std::string>>(state.documentDirectories);
    });
}

std::optional<VolumeCapacities> SimulatedMachine::volumeCapacities(const std::string& /*path*/) {
    return answer(MachineQuery::volume, [](const SimulatedState& state) { return state.volume; });
}

std::vector<SourceFailure> SimulatedMachine::failures() {
    const std::scoped_lock lock(m_mutex);
    return m_state.failures;
}

} // namespace vantor::platform
