// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/FleetReport.hpp"

#include "hosts/terminal/text/DisplayText.hpp"

namespace vantor::hosts::terminal {

using fleet::FleetRow;

MachineState stateOf(const FleetReport& report, const FleetRow& row) {
    if (row.machine->downSince) {
        return MachineState::down;
    }
    if (!row.age) {
        return MachineState::unknown;
    }
    return *row.age > report.originOf(*row.machine).staleAfter ? MachineState::stale : MachineState::up;
}

std::optional<double> toldFigure(const platform::FleetMachine& machine, platform::FleetFigure figure) {
    return machine.downSince ? std::nullopt : machine.figure(figure);
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
