// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Exposition.hpp"
#include "hosts/terminal/formats/FleetReport.hpp"

#include <algorithm>
#include <array>
#include <cmath>

namespace vantor::hosts::terminal {

using fleet::FleetRow;
using platform::FleetFigure;

namespace {

struct Family {
    FleetFigure figure;
    const char* name;
    const char* help;
};

constexpr std::array<Family, 5> families{
    {{FleetFigure::memory, "vantor_fleet_ram_used_ratio", "Share of a machine's memory that is in use."},
     {FleetFigure::storage, "vantor_fleet_storage_used_ratio", "Used share of a machine's fullest volume."},
     {FleetFigure::processor, "vantor_fleet_cpu_used_ratio", "Share of a machine's processors' time."},
     {FleetFigure::received, "vantor_fleet_network_receive_bytes_per_second",
      "What a machine's network receives."},
     {FleetFigure::sent, "vantor_fleet_network_transmit_bytes_per_second",
      "What a machine's network sends."}}};

/// The identity's values as one text for people: no control sign stands between them.
std::string identityText(std::string key) {
    std::ranges::replace(key, '\x1F', ' ');
    return Exposition::labelled(key);
}

/// Two machines may have one name, so what tells them apart is a label too.
std::string labelsOf(const FleetReport& report, const FleetRow& row, bool withVolume) {
    std::string labels = "{machine=\"" + Exposition::labelled(row.machine->name) + "\",source=\"" +
                         Exposition::labelled(report.originOf(*row.machine).name) + "\",key=\"" +
                         identityText(row.machine->key) + "\"";
    if (withVolume && !row.machine->volume.empty()) {
        labels += ",mountpoint=\"" + Exposition::labelled(row.machine->volume) + "\"";
    }
    return labels + "}";
}

void addSources(Exposition& exposition, const FleetReport& report) {
    exposition.family("vantor_fleet_source_up", "gauge",
                      "Whether a source of machines answers (1) or not (0).");
    if (report.table.snapshot() != nullptr) {
        for (const platform::FleetOrigin& origin : report.table.snapshot()->sources) {
            exposition.sample("{source=\"" + Exposition::labelled(origin.name) + "\"}",
                              origin.isSilent ? "0" : "1");
        }
    }
}

} // namespace

std::string fleetPrometheus(const FleetReport& report) {
    Exposition exposition;
    const std::vector<FleetRow>& rows = report.table.rows();
    exposition.family("vantor_fleet_machine_up", "gauge",
                      "Whether a machine's figures are those of now (1) or not (0).");
    for (const FleetRow& row : rows) {
        exposition.sample(labelsOf(report, row, false), stateOf(report, row) == MachineState::up ? "1" : "0");
    }
    for (const Family& family : families) {
        exposition.family(family.name, "gauge", family.help);
        for (const FleetRow& row : rows) {
            const std::optional<double>& value = row.machine->figure(family.figure);
            if (value && std::isfinite(*value) && stateOf(report, row) == MachineState::up) {
                exposition.sample(labelsOf(report, row, family.figure == FleetFigure::storage),
                                  Exposition::numberText(*value));
            }
        }
    }
    exposition.family("vantor_fleet_age_seconds", "gauge", "How old a machine's last figures are.");
    for (const FleetRow& row : rows) {
        if (row.age) {
            exposition.sample(labelsOf(report, row, false), Exposition::numberText(row.age->count()));
        }
    }
    addSources(exposition, report);
    return exposition.text();
}

} // namespace vantor::hosts::terminal
