// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"
#include "hosts/terminal/formats/PangoMarkup.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace vantor::hosts::terminal {

namespace {

constexpr std::string_view unavailable = "unavailable";

bool isAsked(const Reading::Section& section, std::optional<platform::Source> field) {
    return !field || section.kind->source == *field;
}

std::string nameOf(const Reading::Section& section) {
    return platform::NSLocalizedString(section.kind->headingKey);
}

/// "Used RAM: 5.2 GB" for each figure of the fields asked for, then what failed.
std::string tooltip(const Reading& reading, std::optional<platform::Source> field) {
    std::string text;
    for (const Reading::Section& section : reading.sections) {
        if (!isAsked(section, field)) {
            continue;
        }
        if (!section.note.empty()) {
            text += (text.empty() ? "" : "\n") + markup(nameOf(section)) + " " + markup(section.note);
        }
        for (const Reading::Row& row : section.rows) {
            if (row.isShown) {
                text += (text.empty() ? "" : "\n") + markup(row.caption) + ": " + markup(figureOf(row));
            }
        }
    }
    for (const platform::SourceFailure& failure : reading.failures) {
        text +=
            (text.empty() ? "" : "\n") + std::string(wordOf(failure.source)) + ": " + markup(failure.reason);
    }
    return text;
}

/// The fullest chart, or the one asked for.
double fullest(const Reading& reading, std::optional<platform::Source> field) {
    double progress = NAN;
    for (const Reading::Section& section : reading.sections) {
        if (section.chart && isAsked(section, field)) {
            progress = std::fmax(progress, section.chart->progress); // the other where one is not-a-number
        }
    }
    return progress;
}

bool isAnyUnavailable(const Reading& reading, std::optional<platform::Source> field) {
    return std::ranges::any_of(reading.sections, [&](const Reading::Section& section) {
        return section.hasFailed && isAsked(section, field);
    });
}

std::string shortText(const Reading& reading, std::optional<platform::Source> field) {
    if (field && !reading.section(*field).chart) {
        return rowsLine(reading.section(*field), true);
    }
    std::string text;
    for (const Reading::Section& section : reading.sections) {
        if (section.chart && isAsked(section, field)) {
            text += (text.empty() ? "" : "  ") + (field ? "" : nameOf(section) + " ") + percentOf(section);
        }
    }
    return text;
}

} // namespace

std::string waybarText(const Reading& reading, std::optional<platform::Source> field) {
    nlohmann::ordered_json object{{"text", markup(shortText(reading, field))},
                                  {"tooltip", tooltip(reading, field)}};
    const double progress = fullest(reading, field);
    const std::string_view level = levelName(progress);
    if (isAnyUnavailable(reading, field)) { // beside the band of those that can be read
        object["class"] =
            level.empty() ? nlohmann::ordered_json(unavailable) : nlohmann::ordered_json{level, unavailable};
    } else if (!level.empty()) {
        object["class"] = level;
    }
    if (object.contains("class")) {
        object["alt"] = level.empty() ? unavailable : level;
    }
    if (const std::optional<int> percent = wholePercent(progress)) {
        object["percentage"] = *percent;
    }
    return object.dump() + '\n';
}

} // namespace vantor::hosts::terminal
