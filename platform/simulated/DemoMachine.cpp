// SPDX-License-Identifier: MIT
#include "platform/simulated/DemoMachine.hpp"

#include <array>
#include <cstddef>

namespace vantor::platform {

namespace {

constexpr std::uint64_t gibibyte = 1ULL << 30;
constexpr std::int64_t gigabyte = 1'000'000'000;
constexpr std::uint64_t pageSize = 4096;

/// One step of the play, in round figures; after the last comes the first again.
struct Scene {
    std::uint32_t freeTenths;         // tenths of a GiB of free memory
    std::uint32_t user, system, nice; // percent of the processor's time
    std::uint32_t receivedKB, sentKB; // a second
};

constexpr std::array<Scene, 12> scenes{{
    {62, 18, 6, 0, 1240, 86},
    {60, 24, 7, 1, 2310, 120},
    {57, 37, 9, 1, 5400, 210},
    {53, 48, 11, 2, 8120, 340},
    {47, 61, 13, 2, 3900, 190},
    {42, 70, 14, 3, 1460, 75},
    {39, 66, 15, 1, 640, 48},
    {44, 52, 12, 0, 220, 31},
    {50, 35, 9, 0, 94, 12},
    {55, 22, 7, 0, 12, 4},
    {59, 14, 5, 0, 3, 1},
    {61, 11, 4, 0, 380, 27},
}};

std::uint32_t pages(std::uint64_t tenthsOfGibibyte) {
    return static_cast<std::uint32_t>(tenthsOfGibibyte * gibibyte / 10 / pageSize);
}

/// Moves each section on by one scene whenever that section is asked.
class Play {
public:
    void operator()(SimulatedState& state, MachineQuery query) {
        if (query == MachineQuery::virtualMemory) {
            state.virtualMemory.free_count = pages(next(m_memory).freeTenths);
        } else if (query == MachineQuery::cpuLoad) {
            const Scene& scene = next(m_processor);
            state.cpuLoad.user += scene.user;
            state.cpuLoad.system += scene.system;
            state.cpuLoad.nice += scene.nice;
            state.cpuLoad.idle += 100 - scene.user - scene.system - scene.nice;
        } else if (query == MachineQuery::interfaces) {
            const Scene& scene = next(m_network);
            InterfaceAddress& wifi = state.interfaces->front();
            wifi.receivedBytes += scene.receivedKB * 1000;
            wifi.sentBytes += scene.sentKB * 1000;
        }
    }

private:
    static const Scene& next(std::size_t& step) { return scenes[step++ % scenes.size()]; }

    std::size_t m_memory = 0;
    std::size_t m_processor = 0;
    std::size_t m_network = 0;
};

SimulatedState laptop() {
    SimulatedState state;
    state.pageSize = pageSize;
    state.physicalMemory = 16 * gibibyte;
    state.virtualMemory.active_count = pages(58);
    state.virtualMemory.inactive_count = pages(21);
    state.virtualMemory.wire_count = pages(17);
    state.virtualMemory.purgeable_count = pages(8);
    state.virtualMemory.compressor_page_count = pages(3);
    state.interfaces = {{"en0", AF_LINK, 0, 0}, {"pdp_ip0", AF_LINK, 0, 0}, {"lo0", AF_LINK, 0, 0}};
    state.volume = VolumeCapacities{512 * gigabyte, 171 * gigabyte, 184 * gigabyte};
    return state;
}

} // namespace

DemoMachine::DemoMachine() : SimulatedMachine(laptop(), Play()) {}

} // namespace vantor::platform
