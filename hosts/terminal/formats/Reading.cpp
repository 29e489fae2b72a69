// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Reading.hpp"

#include "charts/LevelColor.hpp"
#include "controller/Outlets.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <utility>

namespace vantor::hosts::terminal {

namespace {

constexpr std::array<std::string_view, chartOutlets.size()> chartNames{"ram", "storage", "cpu"};

} // namespace

std::string_view Reading::label(std::string_view outlet) const {
    const auto found = std::ranges::find(labels, outlet, &Label::outlet);
    return found != labels.end() ? std::string_view(found->text) : std::string_view();
}

const Reading::Chart* Reading::chart(std::string_view name) const {
    const auto found = std::ranges::find(charts, name, &Chart::name);
    return found != charts.end() ? &*found : nullptr;
}

bool Reading::hasFailed(platform::Source source) const {
    return std::ranges::find(failures, source, &platform::SourceFailure::source) != failures.end();
}

Reading readingOf(const TEReportTableViewController& controller,
                  std::vector<platform::SourceFailure> failures, std::chrono::system_clock::time_point time) {
    Reading reading;
    reading.time = time;
    reading.records = controller.records();
    reading.failures = std::move(failures);
    for (const LabelOutlet& outlet : labelOutlets) {
        reading.labels.push_back({outlet.name, (controller.*outlet.label)->text()});
    }
    for (std::size_t i = 0; i < chartOutlets.size(); ++i) {
        const auto& container = (controller.*chartOutlets[i].chart)();
        if (container != nullptr && container->hostingController()->rootView()) {
            const ArcChartView& view = *container->hostingController()->rootView();
            reading.charts.push_back({chartNames[i], view.arcChartViewModel->progress(), view.title,
                                      view.arcChartViewModel->innerRingColor()});
        }
    }
    reading.showsReleasable = !controller.releasableSTORAGEStackView->isHidden();
    return reading;
}

std::string timeText(std::chrono::system_clock::time_point time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const std::time_t count = std::chrono::system_clock::to_time_t(seconds);
    std::tm parts{};
    ::gmtime_r(&count, &parts);
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", parts.tm_year + 1900,
                  parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec,
                  static_cast<int>(std::chrono::floor<std::chrono::milliseconds>(time - seconds).count()));
    return text.data();
}

std::string_view levelName(double progress) {
    constexpr double unthinkable = 1e15; // far outside what a level can be, and safely inside 64 bits
    if (std::isnan(progress) || progress >= unthinkable) {
        return {};
    }
    const platform::UIColor color = levelColor(static_cast<std::int64_t>(progress * 100.0));
    return color == platform::UIColor::systemGreenColor()    ? "green"
           : color == platform::UIColor::systemYellowColor() ? "yellow"
           : color == platform::UIColor::systemRedColor()    ? "red"
                                                             : "orange";
}

std::optional<int> wholePercent(double progress) {
    if (std::isnan(progress)) {
        return std::nullopt;
    }
    return static_cast<int>(std::nearbyint(std::clamp(progress, 0.0, 1.0) * 100));
}

std::string_view chartName(Field field) {
    const auto index = static_cast<std::size_t>(field);
    return index < chartNames.size() ? chartNames[index] : std::string_view();
}

} // namespace vantor::hosts::terminal
