// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"
#include "hosts/terminal/formats/MemoryNames.hpp"
#include "platform/core/PrintableText.hpp"

#include <nlohmann/json.hpp>

#include <array>
#include <cmath>
#include <cstdio>

namespace vantor::hosts::terminal {

namespace {

using Json = nlohmann::ordered_json; // keys in the order in which they are written

/// A number, or null for what is none: JSON has no word for it.
Json numberOf(double value) {
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

/// The figures of a section, or its keys with null where nothing was read.
Json memoryOf(const Reading& reading) {
    Json object = Json::object();
    for (const MemoryName& name : memoryNames) {
        const auto value = reading.records.memory ? reading.records.memory->find(name.key) : std::nullopt;
        object[std::string(name.json)] = value ? Json(*value) : Json(nullptr);
    }
    return object;
}

Json storageOf(const Reading& reading) {
    const bool known = reading.records.storage.has_value();
    const StorageFigures storage = reading.records.storage.value_or(StorageFigures{});
    const auto bytes = [&](std::int64_t count) { return known ? Json(count) : Json(nullptr); };
    return {{"mountPoint", reading.mountPoint.empty()
                               ? Json(nullptr)
                               : Json(platform::printableText(reading.mountPoint, 4096))},
            {"total", bytes(storage.total)},
            {"used", bytes(storage.used)},
            {"free", bytes(storage.free)},
            {"releasable", bytes(storage.releasable)}};
}

Json processorOf(const Reading& reading) {
    const CpuUsage usage = reading.records.processor.value_or(CpuUsage{NAN, NAN, NAN, NAN});
    return {{"system", numberOf(usage.system)},
            {"user", numberOf(usage.user)},
            {"idle", numberOf(usage.idle)},
            {"nice", numberOf(usage.nice)}};
}

Json networkOf(const Reading& reading) {
    const bool known = reading.records.network.has_value();
    const NetworkFigures figures = reading.records.network.value_or(NetworkFigures{});
    const auto counter = [&](std::uint64_t bytes) { return known ? Json(bytes) : Json(nullptr); };
    const auto rate = [&](std::int64_t delta) {
        return known && !figures.isFirst ? Json(delta) : Json(nullptr);
    };
    return {{"lanReceived", counter(figures.totals.cards.receivedBytes)},
            {"lanSent", counter(figures.totals.cards.sentBytes)},
            {"wwanReceived", counter(figures.totals.modems.receivedBytes)},
            {"wwanSent", counter(figures.totals.modems.sentBytes)},
            {"sentPerSecond", rate(figures.sentDelta)},
            {"receivedPerSecond", rate(figures.receivedDelta)}};
}

/// A colour on a light background as "#RRGGBB".
std::string hexOf(const platform::UIColor& color) {
    const platform::RGBA paint = color.resolved(platform::Appearance::light);
    const auto byte = [](double component) { return static_cast<unsigned>(std::lround(component * 255)); };
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", byte(paint.red), byte(paint.green),
                  byte(paint.blue));
    return text.data();
}

Json labelsOf(const Reading& reading) {
    Json object = Json::object();
    for (const Reading::Section& section : reading.sections) {
        for (const Reading::Row& row : section.rows) {
            object[std::string(row.kind->figure.name)] =
                section.hasFailed ? Json(nullptr) : Json(platform::printableText(row.figure));
        }
    }
    return object;
}

Json chartsOf(const Reading& reading) {
    Json object = Json::object();
    for (const Reading::Section& section : reading.sections) {
        if (section.chart) {
            object[std::string(section.kind->mark)] = {
                {"progress", numberOf(section.chart->progress)},
                {"text", section.hasFailed ? Json(nullptr) : Json(percentOf(section))},
                {"color", section.hasFailed ? Json(nullptr) : Json(hexOf(section.chart->color))}};
        }
    }
    return object;
}

Json failuresOf(const Reading& reading) {
    Json object = Json::object();
    for (const platform::SourceFailure& failure : reading.failures) {
        object[std::string(wordOf(failure.source))] = platform::printableText(failure.reason);
    }
    return object;
}

/// Rates and shares of another machine cover an interval that ended a while ago.
Json remoteOf(const Reading::Remote& remote) {
    return {{"state", remote.isUp ? "up" : "down"},
            {"sampled", timeText(remote.sampled)},
            {"intervalSeconds", numberOf(remote.interval.count())},
            {"ageSeconds", numberOf(remote.age.count())}};
}

} // namespace

std::string jsonText(const Reading& reading) {
    Json object{{"schema", 1},
                {"time", timeText(reading.time)},
                {"host", platform::printableText(reading.host)},
                {"ram", memoryOf(reading)},
                {"storage", storageOf(reading)},
                {"cpu", processorOf(reading)},
                {"network", networkOf(reading)},
                {"labels", labelsOf(reading)},
                {"charts", chartsOf(reading)},
                {"failed", failuresOf(reading)}};
    if (reading.remote) {
        object["remote"] = remoteOf(*reading.remote);
    }
    return object.dump() + '\n';
}

} // namespace vantor::hosts::terminal
