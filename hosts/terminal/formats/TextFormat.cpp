// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"
#include "hosts/terminal/text/DisplayText.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace vantor::hosts::terminal {

using platform::NSLocalizedString;

namespace {

struct Line {
    std::string left;
    std::string right;
    std::string note = {}; ///< after what is left, where there is room, else in a line of its own
};

std::string headFigure(const Reading::Section& section) {
    if (section.hasFailed) {
        return NSLocalizedString("host_UNAVAILABLE");
    }
    return section.chart ? percentOf(section) : std::string();
}

/// An empty line has neither side.
std::vector<Line> lines(const Reading& reading) {
    std::vector<Line> lines;
    for (const Reading::Section& section : reading.sections) {
        if (!lines.empty()) {
            lines.emplace_back();
        }
        lines.push_back({NSLocalizedString(section.kind->headingKey), headFigure(section), section.note});
        for (const Reading::Row& row : section.rows) {
            if (row.isShown) {
                lines.push_back({"  " + row.caption, figureOf(row)});
            }
        }
    }
    return lines;
}

std::string padded(const Line& line, int width) {
    if (line.right.empty()) {
        return line.left + '\n';
    }
    std::string text = line.left;
    if (holdsRightToLeft(harmlessCharacters(line.left))) {
        text += "\u200E"; // keeps the figure in its column where the terminal reorders the line
    }
    const int blanks = width - displayWidth(line.left) - displayWidth(line.right);
    return text.append(static_cast<std::size_t>(std::max(blanks, 1)), ' ') + line.right + '\n';
}

} // namespace

std::string plainText(const Reading& reading) {
    std::vector<Line> page = lines(reading);
    int left = 0;
    int right = 0;
    for (const Line& line : page) {
        left = std::max(left, displayWidth(line.left));
        right = std::max(right, displayWidth(line.right));
    }
    const int width = left + 2 + right;
    std::string text = padded({platform::printableText(reading.host), localTimeText(reading.time)}, width);
    text += reading.remote ? reading.remote->heading + '\n' : "";
    text += '\n';
    for (Line& line : page) {
        const std::string note = std::exchange(line.note, {});
        const bool fits =
            displayWidth(line.left) + 1 + displayWidth(note) + 1 + displayWidth(line.right) <= width;
        line.left += !note.empty() && fits ? " " + note : "";
        text += padded(line, width);
        text += !note.empty() && !fits ? "  " + note + '\n' : "";
    }
    return text;
}

std::string plainText(const Reading& reading, platform::Source field) {
    const Reading::Section& section = reading.section(field);
    return (section.chart ? percentOf(section) : rowsLine(section, localeIsUtf8())) + '\n';
}

} // namespace vantor::hosts::terminal
