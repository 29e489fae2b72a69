// SPDX-License-Identifier: MIT
#include "charts/ArcChartStyle.hpp"
#include "hosts/terminal/formats/Formats.hpp"
#include "platform/core/PrintableText.hpp"

#include <nlohmann/json.hpp>

#include <cmath>

namespace vantor::hosts::terminal {

namespace {

/// A text as the content of Pango markup, which tooltips are.
std::string markup(std::string_view text) {
    std::string escaped;
    for (const char c : platform::printableText(text)) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

/// "Used RAM: 5.2 GB" for each figure of the fields asked for, then what failed.
std::string tooltip(const Reading& reading, std::optional<Field> field) {
    static constexpr std::string_view marks[] = {"RAM", "STORAGE", "CPU", "NETWORK"};
    constexpr std::size_t suffix = 5; // "Label"
    std::string text;
    for (const Reading::Label& label : reading.labels) {
        const bool isFigure = !label.outlet.ends_with("TitleLabel");
        const bool isAsked =
            !field || label.outlet.find(marks[static_cast<std::size_t>(*field)]) != std::string_view::npos;
        const bool isHidden = label.outlet == "releasableSTORAGELabel" && !reading.showsReleasable;
        if (isFigure && isAsked && !isHidden) {
            const std::string name(label.outlet.substr(0, label.outlet.size() - suffix));
            text += text.empty() ? "" : "\n";
            text += markup(reading.label(name + "TitleLabel")) + ": " + markup(label.text);
        }
    }
    for (const platform::SourceFailure& failure : reading.failures) {
        text += (text.empty() ? "" : "\n") + std::string(sourceName(failure.source)) + ": " +
                markup(failure.reason);
    }
    return text;
}

/// The fullest chart, or the one asked for.
double fullest(const Reading& reading, std::optional<Field> field) {
    double progress = NAN;
    for (const Reading::Chart& chart : reading.charts) {
        if (!field || chart.name == chartName(*field)) {
            progress = std::fmax(progress, chart.progress); // the other one where one is not-a-number
        }
    }
    return progress;
}

std::string shortText(const Reading& reading, std::optional<Field> field) {
    if (field == Field::network) {
        return networkLine(reading, true);
    }
    std::string text;
    for (const Reading::Chart& chart : reading.charts) {
        if (!field || chart.name == chartName(*field)) {
            text += (text.empty() ? "" : "  ") + percentText(chart.progress);
        }
    }
    return text;
}

} // namespace

std::string waybarText(const Reading& reading, std::optional<Field> field) {
    nlohmann::ordered_json object{{"text", markup(shortText(reading, field))},
                                  {"tooltip", tooltip(reading, field)}};
    const double progress = fullest(reading, field);
    if (const std::string_view level = levelName(progress); !level.empty()) {
        object["class"] = level;
    }
    if (const std::optional<int> percent = wholePercent(progress)) {
        object["percentage"] = *percent;
    }
    return object.dump() + '\n';
}

} // namespace vantor::hosts::terminal
