// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Machine.hpp"

#include <functional>
#include <mutex>
#include <string>
#include <utility>

namespace vantor::platform {

/// Everything that a machine can be asked, as plain values.
struct SimulatedState {
    std::uint64_t pageSize = 16384;
    kern_return_t pageSizeResult = KERN_SUCCESS;
    kern_return_t virtualMemoryResult = KERN_SUCCESS;
    vm_statistics64 virtualMemory{};
    kern_return_t cpuLoadResult = KERN_SUCCESS;
    host_cpu_load_info cpuLoad{};
    std::uint64_t physicalMemory = 0;
    bool isiOSAppOnMac = false;
    std::optional<std::vector<InterfaceAddress>> interfaces = std::vector<InterfaceAddress>{};
    std::vector<std::string> documentDirectories{"/documents"};
    std::optional<VolumeCapacities> volume = VolumeCapacities{};
    std::vector<SourceFailure> failures;
};

/// Which question a machine is asked.
enum class MachineQuery : std::uint8_t {
    pageSize,
    virtualMemory,
    cpuLoad,
    physicalMemory,
    interfaces,
    documentDirectories,
    volume,
};

/// A machine whose answers are written down: for tests and for the demonstration. Queries may come from any
/// thread; they are answered one after the other.
class SimulatedMachine : public Machine {
public:
    /// Called before each answer, under the lock: moves the state on, or notes the order of the questions.
    using Script = std::function<void(SimulatedState& state, MachineQuery query)>;

    explicit SimulatedMachine(SimulatedState state = {}, Script script = {})
        : m_state(std::move(state)), m_script(std::move(script)) {}

    /// Changes the state between two queries.
    void change(const std::function<void(SimulatedState& state)>& with);

    kern_return_t hostPageSize(std::uint64_t& size) override;
    kern_return_t hostVirtualMemory(vm_statistics64& record) override;
    kern_return_t hostCpuLoad(host_cpu_load_info& record) override;
    std::uint64_t physicalMemory() override;
    bool isiOSAppOnMac() override;
    std::optional<std::vector<InterfaceAddress>> interfaceAddresses() override;
    std::shared_ptr<const std::vector<std::string>> documentDirectories() override;
    std::optional<VolumeCapacities> volumeCapacities(const std::string& path) override;
    std::vector<SourceFailure> failures() override;

private:
    template<class Answer>
    auto answer(MachineQuery query, Answer from) {
        const std::scoped_lock lock(m_mutex);
        if (m_script) {
            m_script(m_state, query);
        }
        return from(m_state);
    }

    std::mutex m_mutex;
    SimulatedState m_state;
    Script m_script;
};

} // namespace vantor::platform
