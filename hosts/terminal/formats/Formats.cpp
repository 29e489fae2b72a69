// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"

#include "hosts/terminal/text/DisplayText.hpp"

namespace vantor::hosts::terminal {

std::string formatted(const Reading& reading, Format format, std::optional<Field> field) {
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

std::string networkLine(const Reading& reading, bool withArrows) {
    const auto part = [&](std::string_view sign, std::string_view caption, std::string_view figure) {
        const std::string_view text = reading.label(figure);
        return std::string(withArrows ? sign : reading.label(caption)) + ' ' +
               std::string(text.empty() || reading.hasFailed(platform::Source::network) ? "-" : text);
    };
    return part("\u2193", "dataReceivedNETWORKTitleLabel", "dataReceivedNETWORKLabel") + "  " +
           part("\u2191", "dataSentNETWORKTitleLabel", "dataSentNETWORKLabel");
}

} // namespace vantor::hosts::terminal
