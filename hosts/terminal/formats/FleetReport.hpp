// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/terminal/formats/Formats.hpp"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::hosts::terminal {

/// Many machines at one moment: the source of every format of a fleet.
struct FleetReport {
    std::string name; ///< of the whole, printable
    const fleet::FleetTable& table;
    std::chrono::nanoseconds now; ///< on the steady clock, as are the readings of machines
    std::chrono::system_clock::time_point time;

    [[nodiscard]] const platform::FleetOrigin& originOf(const platform::FleetMachine& machine) const {
        return table.snapshot()->sources.at(machine.source);
    }
};

/// Whether a machine's figures are those of now: it answers; it has not for too long; it was asked in vain;
/// nothing is known of it.
enum class MachineState : std::uint8_t { up, stale, down, unknown };
[[nodiscard]] MachineState stateOf(const FleetReport& report, const fleet::FleetRow& row);
/// A figure as reports tell it: absent for a machine that is down too, whose last ones say nothing of now.
[[nodiscard]] std::optional<double> toldFigure(const platform::FleetMachine& machine,
                                               platform::FleetFigure figure);
/// "up", "stale", "down", "unknown".
[[nodiscard]] std::string_view stateName(MachineState state);

/// A report as a format writes it, ending in a newline. Pure, but for `text`, which writes the user's
/// character set.
[[nodiscard]] std::string formatted(const FleetReport& report, Format format);

/// The page for people: counts and the worst, then a line a machine in the table's order, groups apart.
[[nodiscard]] std::string fleetText(const FleetReport& report);

/// One JSON object in one line, as docs/vantor-fleet.schema.json describes it.
[[nodiscard]] std::string fleetJson(const FleetReport& report);

/// One JSON object in one line, as Waybar's custom modules take it: the worst machine and how many are down,
/// in a tooltip the counts and the names of those that need a look, the class of the worst band (beside it
/// "unavailable" where a source is silent) and the worst share in percent.
[[nodiscard]] std::string fleetWaybar(const FleetReport& report);

/// The text exposition format 0.0.4: gauges by machine and source. Figures that are not of now are left out.
[[nodiscard]] std::string fleetPrometheus(const FleetReport& report);

} // namespace vantor::hosts::terminal
