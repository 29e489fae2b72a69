// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/FleetReport.hpp"

#include <nlohmann/json.hpp>

#include <array>
#include <cmath>
#include <utility>

namespace vantor::hosts::terminal {

using fleet::FleetRow;
using platform::FleetFigure;
using platform::FleetMachine;

namespace {

using Json = nlohmann::ordered_json; // keys in the order in which they are written

constexpr std::array<std::pair<FleetFigure, const char*>, 5> figureKeys{
    {{FleetFigure::memory, "ram"},
     {FleetFigure::storage, "storage"},
     {FleetFigure::processor, "cpu"},
     {FleetFigure::received, "receivedPerSecond"},
     {FleetFigure::sent, "sentPerSecond"}}};

template<class Value>
Json orNull(const std::optional<Value>& value) {
    return value && std::isfinite(*value) ? Json(*value) : Json(nullptr);
}

Json textOrNull(const std::string& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json secondsOrNull(const std::optional<std::chrono::duration<double>>& time) {
    return time ? orNull(std::optional(time->count())) : Json(nullptr);
}

std::optional<std::chrono::system_clock::time_point>
momentBefore(const FleetReport& report, const std::optional<std::chrono::duration<double>>& age) {
    using Clock = std::chrono::system_clock;
    return age ? std::optional(report.time - std::chrono::duration_cast<Clock::duration>(*age))
               : std::nullopt;
}

Json momentOrNull(const std::optional<std::chrono::system_clock::time_point>& moment) {
    return moment ? Json(timeText(*moment)) : Json(nullptr);
}

Json labelsOf(const FleetMachine& machine) {
    Json object = Json::object();
    if (machine.labels != nullptr) {
        for (const auto& [name, value] : *machine.labels) {
            object[name] = value;
        }
    }
    return object;
}

Json machineOf(const FleetReport& report, const FleetRow& row) {
    const FleetMachine& machine = *row.machine;
    const platform::FleetOrigin& origin = report.originOf(machine);
    Json object{{"machine", machine.name},
                {"source", origin.name},
                {"key", machine.key},
                {"state", stateName(stateOf(report, row))},
                {"downSince", momentOrNull(machine.downSince)},
                {"problem", textOrNull(machine.problem)},
                {"sampled", momentOrNull(momentBefore(report, row.age))},
                {"intervalSeconds", origin.interval.count()},
                {"ageSeconds", secondsOrNull(row.age)},
                {"labels", labelsOf(machine)}};
    for (const auto& [figure, key] : figureKeys) {
        object[key] = orNull(toldFigure(machine, figure));
    }
    object["mountPoint"] = machine.downSince ? Json(nullptr) : textOrNull(machine.volume);
    return object;
}

Json sourcesOf(const FleetReport& report) {
    Json sources = Json::array();
    if (report.table.snapshot() != nullptr) {
        for (const platform::FleetOrigin& origin : report.table.snapshot()->sources) {
            Json age = nullptr;
            if (origin.answered) {
                age = std::chrono::duration<double>(report.now - *origin.answered).count();
            }
            sources.push_back({{"source", origin.name},
                               {"isSilent", origin.isSilent},
                               {"problem", textOrNull(origin.problem)},
                               {"intervalSeconds", origin.interval.count()},
                               {"ageSeconds", age}});
        }
    }
    return sources;
}

Json countsOf(const fleet::FleetCounts& counts) {
    Json object{{"machines", counts.machines}, {"answering", counts.answering()}};
    for (std::size_t band = 0; band < fleet::bandCount; band++) {
        object[fleet::bandName(static_cast<fleet::Band>(band))] = counts.inBand.at(band);
    }
    return object;
}

Json worstOf(const FleetReport& report) {
    const std::optional<FleetRow>& worst = report.table.worst();
    if (!worst) {
        return nullptr;
    }
    const auto key = std::ranges::find(figureKeys, *worst->figure, &decltype(figureKeys)::value_type::first);
    return {{"machine", worst->machine->name},
            {"source", report.originOf(*worst->machine).name},
            {"figure", key->second},
            {"value", orNull(worst->machine->figure(*worst->figure))},
            {"level", fleet::bandName(worst->band)}};
}

} // namespace

std::string fleetJson(const FleetReport& report) {
    Json machines = Json::array();
    for (const FleetRow& row : report.table.rows()) {
        machines.push_back(machineOf(report, row));
    }
    const Json object{{"schema", 1},
                      {"time", timeText(report.time)},
                      {"fleet", report.name},
                      {"sources", sourcesOf(report)},
                      {"counts", countsOf(report.table.counts())},
                      {"worst", worstOf(report)},
                      {"machines", std::move(machines)}};
    return object.dump(-1, ' ', true, Json::error_handler_t::replace) + '\n';
}

} // namespace vantor::hosts::terminal
