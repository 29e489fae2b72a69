// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedWork.hpp"

#include <algorithm>

namespace vantor::platform {

namespace {

bool isSame(const SimulatedWorkState& state, const RunningProcess& process) {
    const auto now = state.processes.find(process.identity.number);
    return now != state.processes.end() && now->second.identity.start == process.identity.start &&
           now->second.group == process.group;
}

} // namespace

class SimulatedWork::Handle final : public ProcessHandle {
public:
    Handle(SimulatedWork& work, RunningProcess process) : m_work(work), m_process(std::move(process)) {}

    std::string signal(EndSignal which) override {
        return m_work.answer(WorkQuery::signal, [&](SimulatedWorkState& state) -> std::string {
            if (isSame(state, m_process)) {
                const int number = m_process.identity.number;
                state.signals.emplace_back(number, which);
                const auto stubborn = state.stubborn.find(number);
                if (stubborn == state.stubborn.end() || stubborn->second == which) {
                    state.processes.erase(number);
                }
            }
            return {};
        });
    }
    bool isRunning() override {
        return m_work.answer(WorkQuery::process,
                             [&](SimulatedWorkState& state) { return isSame(state, m_process); });
    }

private:
    SimulatedWork& m_work;
    RunningProcess m_process;
};

void SimulatedWork::change(const std::function<void(SimulatedWorkState& state)>& with) {
    const std::scoped_lock lock(m_mutex);
    with(m_state);
}

std::optional<Pressure> SimulatedWork::memoryPressure() {
    return answer(WorkQuery::level, [](SimulatedWorkState& state) { return state.memoryPressure; });
}

std::optional<Pressure> SimulatedWork::processorPressure() {
    return answer(WorkQuery::level, [](SimulatedWorkState& state) { return state.processorPressure; });
}

ProcessorState SimulatedWork::processorState() {
    return answer(WorkQuery::processors, [](SimulatedWorkState& state) { return state.processors; });
}

std::optional<SwapSpace> SimulatedWork::swapSpace() {
    return answer(WorkQuery::level, [](SimulatedWorkState& state) { return state.swap; });
}

std::vector<ApplicationUse> SimulatedWork::applications(ListedFor /*purpose*/) {
    return answer(WorkQuery::applications, [](SimulatedWorkState& state) { return state.applications; });
}

ApplicationDetail SimulatedWork::detail(const ApplicationUse& application) {
    return answer(WorkQuery::process, [&](SimulatedWorkState& state) {
        ApplicationDetail detail;
        const std::uint64_t parts = std::max<std::uint64_t>(application.processes.size(), 1);
        for (const ProcessIdentity& process : application.processes) {
            if (state.processes.contains(process.number)) {
                detail.processes.push_back({process, application.memory / parts, application.swap / parts,
                                            application.processorTime / parts});
            }
        }
        return detail;
    });
}

std::optional<MemoryLevel> SimulatedWork::memoryLevel() {
    return answer(WorkQuery::level, [](SimulatedWorkState& state) { return state.level; });
}

bool SimulatedWork::hasGroups() {
    return answer(WorkQuery::groups, [](SimulatedWorkState& state) { return state.hasGroups; });
}

std::vector<ReclaimableGroup> SimulatedWork::reclaimableGroups() {
    return answer(WorkQuery::groups, [](SimulatedWorkState& state) { return state.groups; });
}

std::optional<ReclaimableGroup> SimulatedWork::reclaimableGroup(const std::string& path) {
    return answer(WorkQuery::groups, [&](SimulatedWorkState& state) {
        const auto found = std::ranges::find(state.groups, path, &ReclaimableGroup::path);
        return found == state.groups.end() ? std::nullopt : std::optional(*found);
    });
}

ReclaimAnswer SimulatedWork::reclaim(const std::string& path, std::uint64_t bytes) {
    return answer(WorkQuery::reclaim, [&](SimulatedWorkState& state) {
        const auto found = std::ranges::find(state.groups, path, &ReclaimableGroup::path);
        if (found == state.groups.end()) {
            return ReclaimAnswer::less;
        }
        if (state.answer != ReclaimAnswer::done) {
            return state.answer;
        }
        const std::uint64_t moved =
            std::min({bytes, found->inactive, state.swap ? state.swap->free : std::uint64_t{0}});
        found->inactive -= moved;
        if (state.swap) {
            state.swap->free -= moved;
        }
        if (state.level) {
            state.level->available += static_cast<std::uint64_t>(static_cast<double>(moved) * state.gain);
        }
        return moved < bytes ? ReclaimAnswer::less : ReclaimAnswer::done;
    });
}

int SimulatedWork::ownNumber() {
    return answer(WorkQuery::process, [](SimulatedWorkState& state) { return state.ownNumber; });
}

std::optional<RunningProcess> SimulatedWork::process(int number) {
    return answer(WorkQuery::process, [&](SimulatedWorkState& state) {
        const auto found = state.processes.find(number);
        return found == state.processes.end() ? std::nullopt : std::optional(found->second);
    });
}

std::vector<int> SimulatedWork::processesIn(const std::string& group) {
    return answer(WorkQuery::process, [&](SimulatedWorkState& state) {
        std::vector<int> numbers;
        for (const auto& [number, process] : state.processes) {
            if (process.group == group) {
                numbers.push_back(number);
            }
        }
        return numbers;
    });
}

std::unique_ptr<ProcessHandle> SimulatedWork::open(const RunningProcess& process) {
    const bool isThere =
        answer(WorkQuery::process, [&](SimulatedWorkState& state) { return isSame(state, process); });
    return isThere ? std::make_unique<Handle>(*this, process) : nullptr;
}

} // namespace vantor::platform
