// SPDX-License-Identifier: MIT
#include "hosts/terminal/reports/Formats.hpp"

#include "hosts/terminal/text/DisplayText.hpp"

namespace vantor::hosts::terminal {

std::string formatted(const Report& report, Format format, std::optional<Field> field) {
    switch (format) {
    case Format::json:
        return jsonReport(report);
    case Format::waybar:
        return waybarReport(report, field);
    case Format::prometheus:
        return prometheusReport(report);
    case Format::text:
        break;
    }
    return inLocaleCharacters(field ? textReport(report, *field) : textReport(report));
}

std::string networkLine(const Report& report, bool withArrows) {
    const auto part = [&](std::string_view sign, std::string_view caption, std::string_view figure) {
        const std::string_view text = report.label(figure);
        return std::string(withArrows ? sign : report.label(caption)) + ' ' +
               std::string(text.empty() || report.hasFailed(platform::Source::network) ? "-" : text);
    };
    return part("\u2193", "dataReceivedNETWORKTitleLabel", "dataReceivedNETWORKLabel") + "  " +
           part("\u2191", "dataSentNETWORKTitleLabel", "dataSentNETWORKLabel");
}

} // namespace vantor::hosts::terminal
