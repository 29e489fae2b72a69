// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/WorkloadControl.hpp"

#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace vantor::platform {

/// What runs on a machine and how it takes what is done to it, as plain values.
struct SimulatedWorkState {
    std::vector<ApplicationUse> applications;
    ProcessorState processors;
    std::optional<Pressure> memoryPressure, processorPressure;
    std::optional<SwapSpace> swap;

    std::optional<MemoryLevel> level;
    bool hasGroups = true;
    std::vector<ReclaimableGroup> groups;
    double gain = 1; ///< of a byte that goes to swap, what becomes available
    ReclaimAnswer answer = ReclaimAnswer::done;

    int ownNumber = 0;
    std::map<int, RunningProcess> processes;
    std::map<int, EndSignal> stubborn;                   ///< which end by that signal only
    std::vector<std::pair<int, EndSignal>> signals = {}; ///< that were sent
};

enum class WorkQuery : std::uint8_t { applications, processors, level, groups, reclaim, process, signal };

/// A workload whose answers are written down, and which answers to what is done to it: for tests and for the
/// demonstration. Calls may come from any thread; they are answered one after the other.
class SimulatedWork : public Workload, public WorkloadControl {
public:
    /// Called before each answer, under the lock: moves the state on.
    using Script = std::function<void(SimulatedWorkState& state, WorkQuery query)>;

    explicit SimulatedWork(SimulatedWorkState state = {}, Script script = {})
        : m_state(std::move(state)), m_script(std::move(script)) {}

    /// Looks at the state or changes it, between two calls.
    void change(const std::function<void(SimulatedWorkState& state)>& with);

    std::optional<Pressure> memoryPressure() override;
    std::optional<Pressure> processorPressure() override;
    ProcessorState processorState() override;
    std::optional<SwapSpace> swapSpace() override;
    std::vector<ApplicationUse> applications(ListedFor purpose) override;
    /// Its processes that still run, with equal parts of what it holds.
    ApplicationDetail detail(const ApplicationUse& application) override;

    std::optional<MemoryLevel> memoryLevel() override;
    bool hasGroups() override;
    std::vector<ReclaimableGroup> reclaimableGroups() override;
    std::optional<ReclaimableGroup> reclaimableGroup(const std::string& path) override;
    ReclaimAnswer reclaim(const std::string& path, std::uint64_t bytes) override;
    int ownNumber() override;
    std::optional<RunningProcess> process(int number) override;
    std::vector<int> processesIn(const std::string& group) override;
    /// The handle must not outlive this.
    std::unique_ptr<ProcessHandle> open(const RunningProcess& process) override;

private:
    class Handle;
    template<class Answer>
    auto answer(WorkQuery query, Answer from) {
        const std::scoped_lock lock(m_mutex);
        if (m_script) {
            m_script(m_state, query);
        }
        return from(m_state);
    }

    std::mutex m_mutex;
    SimulatedWorkState m_state;
    Script m_script;
};

} // namespace vantor::platform
