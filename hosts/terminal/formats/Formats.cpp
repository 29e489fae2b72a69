// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"

#include "charts/ArcChartStyle.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

namespace vantor::hosts::terminal {

std::string formatted(const Reading& reading, Format format, std::optional<platform::Source> field) {
    switch (format) {
    case Format::json:
        return jsonText(reading);
    case Format::waybar:
        return waybarText(reading, field);
    case Format::prometheus:
        return prometheusText(reading);
    case Format::text:
        break;
    }
    return inLocaleCharacters(field ? plainText(reading, *field) : plainText(reading));
}

std::string_view wordOf(platform::Source source) {
    const Section* const section = sectionOf(source);
    return section != nullptr ? section->mark : sourceName(source);
}

std::string figureOf(const Reading::Row& row) {
    return row.figure.empty() ? "-" : row.figure;
}

std::string percentOf(const Reading::Section& section) {
    return section.hasFailed || !section.chart ? "-" : percentText(section.chart->progress);
}

std::string rowsLine(const Reading::Section& section, bool withSigns) {
    std::string line;
    for (const Reading::Row& row : section.rows) {
        line += line.empty() ? "" : "  ";
        line += withSigns ? std::string(row.kind->sign) : row.caption;
        line += ' ' + figureOf(row);
    }
    return line;
}

} // namespace vantor::hosts::terminal
