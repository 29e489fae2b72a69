// SPDX-License-Identifier: MIT
#include "platform/simulated/DemoWork.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace vantor::platform {

namespace {

constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;
constexpr std::size_t processors = 8;
constexpr std::uint64_t interval = 2'000'000; ///< microseconds between two looks, as the demonstration counts

struct DemoApplication {
    const char *id, *name, *icon;
    std::uint64_t memory, inactive, swap; ///< MiB
    std::size_t processes;
    unsigned permille; ///< of all processors
};

constexpr std::array<DemoApplication, 8> played{{
    {"browser", "Web Browser", "web-browser", 2480, 610, 96, 14, 118},
    {"developer", "Developer", "applications-development", 1430, 380, 210, 6, 61},
    {"mail", "Mail", "internet-mail", 512, 240, 38, 3, 4},
    {"music", "Music", "multimedia-audio-player", 305, 90, 0, 2, 12},
    {"files", "Files", "system-file-manager", 178, 64, 12, 1, 1},
    {"pictures", "Pictures", "image-viewer", 164, 120, 0, 1, 0},
    {"editor", "Text Editor", "accessories-text-editor", 96, 40, 8, 1, 0},
    {"terminal", "Terminal", "utilities-terminal", 71, 12, 4, 3, 6},
}};

SimulatedWorkState start() {
    SimulatedWorkState state;
    int number = 2000;
    for (const DemoApplication& application : played) {
        ApplicationUse use{.id = application.id,
                           .name = application.name,
                           .icon = application.icon,
                           .memory = application.memory * mebibyte,
                           .kernel = application.memory * mebibyte / 40,
                           .swap = application.swap * mebibyte};
        const std::string group = std::string("app.slice/app-") + application.id + "-1.scope";
        for (std::size_t i = 0; i < application.processes; ++i) {
            const ProcessIdentity identity{++number, 1, application.id};
            use.processes.push_back(identity);
            state.processes[number] = {.identity = identity,
                                       .parent = 1,
                                       .session = 1,
                                       .isThisUsers = true,
                                       .program = application.id,
                                       .group = group};
        }
        state.applications.push_back(std::move(use));
        state.groups.push_back({group, application.inactive * mebibyte, 0});
    }
    state.applications.push_back(
        {.name = "Session services", .isService = true, .memory = 420 * mebibyte, .swap = 20 * mebibyte});
    state.memoryPressure = Pressure{0, 0.1, 0.7, 2'100'000};
    state.processorPressure = Pressure{1.5, 2, 1.2, 9'000'000};
    state.swap = SwapSpace{8192 * mebibyte, 7800 * mebibyte};
    state.level = MemoryLevel{16384 * mebibyte, 6350 * mebibyte};
    state.gain = 0.9;
    state.processors.processors.assign(processors, {});
    state.processors.loads = {1.9, 1.6, 1.2};
    state.processors.hertz = 2.8e9;
    state.processors.celsius = 54;
    return state;
}

/// Moves the play on by an interval whenever the applications or the processors are asked for. Whoever works
/// has used processor time then.
void play(SimulatedWorkState& state, WorkQuery query) {
    if (query == WorkQuery::applications) {
        std::erase_if(state.applications, [&](const ApplicationUse& use) {
            return !use.processes.empty() &&
                   std::ranges::none_of(use.processes, [&](const ProcessIdentity& process) {
                       return state.processes.contains(process.number);
                   });
        });
        for (ApplicationUse& use : state.applications) {
            const auto* const part = std::ranges::find(played, use.id, &DemoApplication::id);
            const std::uint64_t permille = part == played.end() ? 9 : part->permille;
            use.processorTime += interval * processors * permille / 1000;
        }
    } else if (query == WorkQuery::processors) {
        std::uint64_t busy = 20;
        for (ProcessorTicks& processor : state.processors.processors) {
            processor.busy += busy;
            processor.idle += 200 - busy;
            busy = busy * 7 % 120 + 5;
        }
    }
}

} // namespace

DemoWork::DemoWork() : SimulatedWork(start(), play) {}

} // namespace vantor::platform
