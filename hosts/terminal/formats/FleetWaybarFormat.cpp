// SPDX-License-Identifier: MIT
#include "fleet/FleetWords.hpp"
#include "hosts/terminal/formats/FleetReport.hpp"
#include "hosts/terminal/formats/PangoMarkup.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <vector>

namespace vantor::hosts::terminal {

using fleet::Band;
using fleet::FleetRow;

namespace {

constexpr const char* unavailable = "unavailable";

/// The worst band that has a machine. What is unknown or stale is worse than what is not full.
std::optional<Band> worstBand(const fleet::FleetCounts& counts) {
    for (const Band band : {Band::down, Band::red, Band::orange, Band::unknown, Band::stale, Band::yellow,
                            Band::green, Band::neutral}) {
        if (counts.of(band) > 0) {
            return band;
        }
    }
    return std::nullopt;
}

std::string shortText(const fleet::FleetTable& table) {
    const std::size_t down = table.counts().of(Band::down);
    std::string text = down > 0 ? fleet::bandCountText(Band::down, down) : std::string();
    if (table.worst()) {
        text += (text.empty() ? "" : "  ") + fleet::machineText(*table.worst());
    }
    return text.empty() ? fleet::answeringText(table.counts()) : text;
}

/// "× db03  down since 14:03", "db07 RAM 97%".
std::string lineOf(const FleetRow& row) {
    const std::string note = fleet::noteText(row);
    const std::string sign = fleet::bandSign(row.band);
    return (sign.empty() ? "" : sign + " ") +
           (note.empty() ? fleet::machineText(row) : row.machine->name + "  " + note);
}

std::string tooltip(const FleetReport& report) {
    constexpr std::size_t mostLines = 20; // of a tooltip that fits beside a bar
    const fleet::FleetTable& table = report.table;
    std::string text = markup(fleet::countsText(table.counts()));
    if (table.snapshot() != nullptr) {
        for (const std::string& problem : fleet::sourceProblems(*table.snapshot())) {
            text += '\n' + markup(problem);
        }
    }
    std::vector<const FleetRow*> rows;
    for (const FleetRow& row : table.rows()) {
        if (row.band <= Band::orange || row.band >= Band::stale) {
            rows.push_back(&row);
        }
    }
    std::ranges::stable_sort(rows, {}, &FleetRow::band); // groups stand between the worst
    for (std::size_t i = 0; i < std::min(rows.size(), mostLines); i++) {
        text += '\n' + markup(lineOf(*rows[i]));
    }
    return rows.size() > mostLines ? text + "\n\u2026" : text;
}

} // namespace

std::string fleetWaybar(const FleetReport& report) {
    const fleet::FleetTable& table = report.table;
    nlohmann::ordered_json object{{"text", markup(shortText(table))}, {"tooltip", tooltip(report)}};
    const std::optional<Band> band = worstBand(table.counts());
    const bool isSilent = table.snapshot() == nullptr ||
                          std::ranges::any_of(table.snapshot()->sources, &platform::FleetOrigin::isSilent);
    if (band && isSilent) {
        object["class"] = {fleet::bandName(*band), unavailable};
    } else if (band) {
        object["class"] = fleet::bandName(*band);
    } else {
        object["class"] = unavailable;
    }
    object["alt"] = band ? fleet::bandName(*band) : unavailable;
    if (table.worst()) {
        const auto percent = wholePercent(*table.worst()->machine->figure(*table.worst()->figure));
        object["percentage"] = percent.value_or(0);
    }
    return object.dump() + '\n';
}

} // namespace vantor::hosts::terminal
