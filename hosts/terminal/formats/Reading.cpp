// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Reading.hpp"

#include "charts/LevelColor.hpp"
#include "controller/SectionNote.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <utility>

namespace vantor::hosts::terminal {

namespace {

Reading::Section sectionRead(const TEReportTableViewController& controller, const Section& kind,
                             bool hasFailed) {
    Reading::Section section{&kind, hasFailed, {}, {}, std::nullopt};
    if (!hasFailed) {
        section.note = withoutDirectionMarks(sectionNote(kind.source, controller.records()));
    }
    for (const SectionRow& row : kind.rows) {
        section.rows.push_back({&row, (controller.*row.caption.label)->text(),
                                hasFailed ? std::string() : (controller.*row.figure.label)->text(),
                                isShown(controller, row)});
    }
    if (const ArcChartView* const view = chartOf(controller, kind)) {
        section.chart = {hasFailed ? NAN : view->arcChartViewModel->progress(), view->title,
                         view->arcChartViewModel->innerRingColor()};
    }
    return section;
}

} // namespace

const Reading::Section& Reading::section(platform::Source source) const {
    return *std::ranges::find(sections, source, [](const Section& section) { return section.kind->source; });
}

bool Reading::hasFailed(platform::Source source) const {
    return platform::hasFailed(failures, source);
}

Reading readingOf(const TEReportTableViewController& controller,
                  std::vector<platform::SourceFailure> failures, std::chrono::system_clock::time_point time) {
    Reading reading;
    reading.time = time;
    reading.records = controller.records();
    reading.failures = std::move(failures);
    for (const platform::SourceFailure& failure : reading.failures) {
        reading.records.forget(failure.source);
    }
    for (const Section& section : sections) {
        reading.sections.push_back(sectionRead(controller, section, reading.hasFailed(section.source)));
    }
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

std::string localTimeText(std::chrono::system_clock::time_point time) {
    const std::time_t count = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    ::localtime_r(&count, &parts);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%F %T", &parts)};
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

} // namespace vantor::hosts::terminal
