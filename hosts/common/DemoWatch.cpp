// SPDX-License-Identifier: MIT
#include "hosts/common/DemoWatch.hpp"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace vantor::hosts::common {

using platform::FleetFigure;
using platform::FleetMachine;
using platform::SimulatedFleet;

namespace {

constexpr double gibibyte = 1024.0 * 1024 * 1024;
constexpr double memory = 32 * gibibyte, volume = 512e9; // what each of them has, in bytes
constexpr double ticks = 800.0 * static_cast<double>(SimulatedFleet::interval.count()); // eight processors

std::uint64_t part(double whole, double share) {
    return static_cast<std::uint64_t>(std::llround(whole * std::clamp(share, 0.0, 1.0)));
}

/// The shares of the wall, in the bytes and ticks of a machine that has them.
platform::remote::NodeFigures figuresOf(const FleetMachine& machine) {
    const auto told = [&machine](FleetFigure figure) { return machine.figure(figure).value_or(0); };
    const double used = told(FleetFigure::memory), busy = told(FleetFigure::processor);
    platform::remote::NodeFigures figures;
    figures.interval = SimulatedFleet::interval;
    platform::linux::MemorySplit& split = figures.memory.emplace();
    split.total = part(memory, 1);
    split.free = part(memory, 1 - used);
    split.active = part(memory, used * 0.7);
    split.inactive = part(memory, used * 0.2);
    split.wired = part(memory, used * 0.1);
    split.purgeable = split.free / 2;
    platform::remote::NodeVolume& fullest = figures.storage.emplace();
    fullest.mountPoint = machine.volume;
    fullest.size = part(volume, 1);
    fullest.available = part(volume, 1 - told(FleetFigure::storage));
    figures.processor = {part(ticks, busy * 0.7), part(ticks, busy * 0.3), part(ticks, 1 - busy), 0};
    figures.network = {told(FleetFigure::received), told(FleetFigure::sent)};
    return figures;
}

} // namespace

DemoWatch::DemoWatch(const SimulatedFleet& fleet, std::string_view key)
    : m_fleet(fleet), m_key(key), m_tick(std::max<std::uint64_t>(fleet.ticks(), 1) - 1) {
    take();
}

DemoWatch::~DemoWatch() {
    if (m_timer != nullptr) {
        m_timer->invalidate();
    }
}

void DemoWatch::start() {
    m_timer = platform::NSTimer::scheduledTimerWithTimeInterval(
        std::chrono::duration<double>(SimulatedFleet::interval).count(),
        [this] {
            ++m_tick;
            take();
        },
        true);
}

void DemoWatch::take() {
    const std::optional<FleetMachine> machine = m_fleet.machineAt(m_key, m_tick);
    if (!machine) {
        return;
    }
    if (machine->taken) {
        m_state.figures = figuresOf(*machine);
        m_state.taken = *machine->taken;
    }
    m_state.downSince = machine->downSince;
    m_state.problem = machine->problem;
    if (m_handler) {
        m_handler();
    }
}

} // namespace vantor::hosts::common
