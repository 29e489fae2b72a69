// SPDX-License-Identifier: MIT
#include "charts/ArcChartStyle.hpp"
#include "hosts/terminal/reports/Formats.hpp"
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
Json memoryOf(const Report& report) {
    static constexpr const char* keys[] = {"total", "used",      "free",       "active",        "inactive",
                                           "wire",  "purgeable", "compressor", "free+inactive", "pressure"};
    Json object = Json::object();
    for (const char* const key : keys) {
        const auto value = report.records.memory ? report.records.memory->find(key) : std::nullopt;
        object[key] = value ? Json(*value) : Json(nullptr);
    }
    return object;
}

Json storageOf(const Report& report) {
    if (!report.records.storage ||
        report.hasFailed(platform::Source::storage)) { // a failed query counts as 0 in the widget
        return {{"total", nullptr}, {"used", nullptr}, {"free", nullptr}, {"releasable", nullptr}};
    }
    const StorageFigures& storage = *report.records.storage;
    return {{"total", storage.total},
            {"used", storage.used},
            {"free", storage.free},
            {"releasable", storage.releasable}};
}

Json processorOf(const Report& report) {
    CpuUsage usage{NAN, NAN, NAN, NAN};
    if (report.records.processor && !report.hasFailed(platform::Source::processor)) {
        usage = *report.records.processor;
    }
    return {{"system", numberOf(usage.system)},
            {"user", numberOf(usage.user)},
            {"idle", numberOf(usage.idle)},
            {"nice", numberOf(usage.nice)}};
}

Json networkOf(const Report& report) {
    const bool known = report.records.network && !report.hasFailed(platform::Source::network);
    const NetworkFigures figures = known ? *report.records.network : NetworkFigures{};
    const auto counter = [&](std::uint64_t bytes) { return known ? Json(bytes) : Json(nullptr); };
    const auto rate = [&](std::int64_t delta) {
        return known && !figures.isFirst ? Json(delta) : Json(nullptr);
    };
    return {{"wifiReceived", counter(figures.usage.wifiReceived)},
            {"wifiSent", counter(figures.usage.wifiSent)},
            {"wirelessWanDataReceived", counter(figures.usage.wirelessWanDataReceived)},
            {"wirelessWanDataSent", counter(figures.usage.wirelessWanDataSent)},
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

Json labelsOf(const Report& report) {
    Json object = Json::object();
    for (const Report::Label& label : report.labels) {
        if (!label.outlet.ends_with("TitleLabel")) {
            object[std::string(label.outlet)] = platform::printableText(label.text);
        }
    }
    return object;
}

Json chartsOf(const Report& report) {
    Json object = Json::object();
    for (const Report::Chart& chart : report.charts) {
        object[std::string(chart.name)] = {{"progress", numberOf(chart.progress)},
                                           {"text", percentText(chart.progress)},
                                           {"color", hexOf(chart.color)}};
    }
    return object;
}

Json failuresOf(const Report& report) {
    Json object = Json::object();
    for (const platform::SourceFailure& failure : report.failures) {
        object[std::string(sourceName(failure.source))] = platform::printableText(failure.reason);
    }
    return object;
}

} // namespace

std::string jsonReport(const Report& report) {
    const Json object{{"schema", 1},
                      {"time", timeText(report.time)},
                      {"memory", memoryOf(report)},
                      {"storage", storageOf(report)},
                      {"cpu", processorOf(report)},
                      {"network", networkOf(report)},
                      {"labels", labelsOf(report)},
                      {"charts", chartsOf(report)},
                      {"failed", failuresOf(report)}};
    return object.dump() + '\n';
}

} // namespace vantor::hosts::terminal
