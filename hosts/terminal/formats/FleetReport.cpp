// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/FleetReport.hpp"

#include "hosts/terminal/text/DisplayText.hpp"

#include <cmath>
#include <utility>

namespace vantor::hosts::terminal {

using fleet::FleetRow;
using platform::FleetMachine;

namespace {

std::string reasonOf(const FleetReport& report, const FleetRow& row) {
    const FleetMachine& machine = *row.machine;
    switch (stateOf(report, row)) {
    case MachineState::up:
        break;
    case MachineState::stale:
        return report.originOf(machine).isSilent
                   ? std::string()
                   : "has told nothing for " + std::to_string(std::llround(row.age->count())) + " s";
    case MachineState::down:
        return machine.problem.empty() ? "is down" : machine.problem;
    case MachineState::unknown:
        return report.originOf(machine).isSilent ? std::string() : "has told nothing yet";
    }
    return {};
}

} // namespace

MachineState stateOf(const FleetReport& report, const FleetRow& row) {
    if (row.machine->downSince) {
        return MachineState::down;
    }
    if (!row.age) {
        return MachineState::unknown;
    }
    return *row.age > report.originOf(*row.machine).staleAfter ? MachineState::stale : MachineState::up;
}

std::string_view stateName(MachineState state) {
    switch (state) {
    case MachineState::up:
        return "up";
    case MachineState::stale:
        return "stale";
    case MachineState::down:
        return "down";
    case MachineState::unknown:
        break;
    }
    return "unknown";
}

std::vector<Silence> silenceOf(const FleetReport& report) {
    std::vector<Silence> silent;
    if (report.table.snapshot() == nullptr) {
        return {{report.name, "has told nothing yet"}};
    }
    for (const platform::FleetOrigin& origin : report.table.snapshot()->sources) {
        if (origin.isSilent) {
            silent.push_back({origin.name, origin.problem.empty() ? "does not answer" : origin.problem});
        }
    }
    for (const FleetRow& row : report.table.rows()) {
        if (std::string reason = reasonOf(report, row); !reason.empty()) {
            silent.push_back({row.machine->name, std::move(reason)});
        }
    }
    return silent;
}

std::string formatted(const FleetReport& report, Format format) {
    switch (format) {
    case Format::json:
        return fleetJson(report);
    case Format::waybar:
        return fleetWaybar(report);
    case Format::prometheus:
        return fleetPrometheus(report);
    case Format::text:
        break;
    }
    return inLocaleCharacters(fleetText(report));
}

} // namespace vantor::hosts::terminal
