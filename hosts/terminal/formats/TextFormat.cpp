// SPDX-License-Identifier: MIT
#include "hosts/terminal/formats/Formats.hpp"
#include "hosts/terminal/text/DisplayText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace vantor::hosts::terminal {

using platform::NSLocalizedString;
using platform::Source;

namespace {

struct Line {
    std::string left;
    std::string right;
};

/// The outlets of a section's rows, without "TitleLabel" and "Label", in reading order.
struct Section {
    std::string_view nameKey;
    platform::Source source;
    std::string_view chart;
    std::vector<std::string_view> outlets;
};

std::vector<Section> sections(const Reading& reading) {
    std::vector<std::string_view> storage{"totalSTORAGE", "usedSTORAGE", "freeSTORAGE"};
    if (reading.showsReleasable) {
        storage.emplace_back("releasableSTORAGE");
    }
    return {{"host_MEMORY", Source::memory, "ram", {"usedRAM", "freeRAM"}},
            {"host_STORAGE", Source::storage, "storage", std::move(storage)},
            {"host_PROCESSOR", Source::processor, "cpu", {"userCPU", "systemCPU", "inactiveCPU"}},
            {"host_NETWORK", Source::network, "", {"dataReceivedNETWORK", "dataSentNETWORK"}}};
}

std::string headFigure(const Reading& reading, const Section& section) {
    if (reading.hasFailed(section.source)) {
        return NSLocalizedString("host_UNAVAILABLE");
    }
    const Reading::Chart* const chart = reading.chart(section.chart);
    return chart != nullptr ? percentText(chart->progress) : std::string();
}

/// An empty line has neither side.
std::vector<Line> lines(const Reading& reading) {
    std::vector<Line> lines;
    for (const Section& section : sections(reading)) {
        if (!lines.empty()) {
            lines.emplace_back();
        }
        lines.push_back({NSLocalizedString(section.nameKey), headFigure(reading, section)});
        for (const std::string_view outlet : section.outlets) {
            const std::string name(outlet);
            lines.push_back({"  " + std::string(reading.label(name + "TitleLabel")),
                             reading.hasFailed(section.source) ? std::string("-")
                                                               : std::string(reading.label(name + "Label"))});
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
    const std::vector<Line> page = lines(reading);
    int left = 0;
    int right = 0;
    for (const Line& line : page) {
        left = std::max(left, displayWidth(line.left));
        right = std::max(right, displayWidth(line.right));
    }
    std::string text;
    for (const Line& line : page) {
        text += padded(line, left + 2 + right);
    }
    return text;
}

std::string plainText(const Reading& reading, Field field) {
    if (field == Field::network) {
        return networkLine(reading, localeIsUtf8()) + '\n';
    }
    const Reading::Chart* const chart = reading.chart(chartName(field));
    return (chart != nullptr ? percentText(chart->progress) : "-") + '\n';
}

} // namespace vantor::hosts::terminal
