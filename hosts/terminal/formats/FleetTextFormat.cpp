// SPDX-License-Identifier: MIT
#include "fleet/FleetWords.hpp"
#include "hosts/terminal/formats/FleetReport.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>
#include <array>
#include <span>

namespace vantor::hosts::terminal {

using fleet::FleetRow;
using platform::FleetFigure;

namespace {

/// Sign, name, memory, storage, its mount point, processor, received, sent, and how old or why not newer.
constexpr std::size_t columns = 9;
constexpr std::array<bool, columns> isRightAligned{false, false, true, true, false, true, true, true, false};
using Cells = std::array<std::string, columns>;

std::string ageOf(const FleetRow& row) {
    if (row.machine->downSince) {
        return fleet::downText(row.machine->downSince, row.machine->problem);
    }
    return row.age ? fleet::ageText(*row.age) : std::string();
}

Cells cellsOf(const FleetRow& row) {
    const auto figure = [&row](FleetFigure which) {
        return fleet::figureText(which, toldFigure(*row.machine, which));
    };
    return {fleet::bandSign(row.band),
            row.machine->name,
            figure(FleetFigure::memory),
            figure(FleetFigure::storage),
            row.machine->downSince ? std::string() : row.machine->volume,
            figure(FleetFigure::processor),
            figure(FleetFigure::received),
            figure(FleetFigure::sent),
            ageOf(row)};
}

Cells captions() {
    return {"",
            "",
            fleet::figureName(FleetFigure::memory),
            fleet::figureName(FleetFigure::storage),
            "",
            fleet::figureName(FleetFigure::processor),
            fleet::figureName(FleetFigure::received),
            fleet::figureName(FleetFigure::sent),
            ""};
}

/// A cell in its column, kept there where the terminal reorders a line that runs from right to left.
std::string padded(const std::string& cell, int width, bool isRight) {
    const auto blanks = static_cast<std::size_t>(std::max(width - displayWidth(cell), 0));
    std::string text = isRight ? std::string(blanks, ' ') + cell : cell;
    if (holdsRightToLeft(harmlessCharacters(cell))) {
        text += "\u200E";
    }
    return isRight ? text : text + std::string(blanks, ' ');
}

std::string lineOf(const Cells& cells, const std::array<int, columns>& widths) {
    std::string line;
    for (std::size_t i = 0; i < columns; i++) {
        const std::string_view gap = i == 0 ? "" : i == 1 || i == 4 ? " " : "  ";
        line += gap;
        line += padded(cells.at(i), widths.at(i), isRightAligned.at(i));
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

} // namespace

std::string fleetText(const FleetReport& report) {
    const fleet::FleetTable& table = report.table;
    std::vector<Cells> lines{captions()};
    lines.reserve(table.rows().size() + 1);
    std::ranges::transform(table.rows(), std::back_inserter(lines), cellsOf);
    std::array<int, columns> widths{};
    for (const Cells& cells : lines) {
        for (std::size_t i = 0; i < columns; i++) {
            widths.at(i) = std::max(widths.at(i), displayWidth(cells.at(i)));
        }
    }
    std::string text =
        report.name + "  " + localTimeText(report.time) + '\n' + fleet::headerText(table) + '\n';
    if (table.snapshot() != nullptr) {
        const std::string average = fleet::averageText(*table.snapshot(), report.now);
        text += average.empty() ? "" : average + '\n';
        for (const std::string& problem : fleet::sourceProblems(*table.snapshot())) {
            text += problem + '\n';
        }
    }
    text += '\n' + lineOf(lines.front(), widths);
    const bool isGrouped =
        table.groups().size() > 1 || (!table.groups().empty() && !table.groups()[0].name.empty());
    for (const fleet::FleetGroup& group : table.groups()) {
        if (isGrouped) {
            text +=
                '\n' + (group.name.empty() ? "\u2013" : group.name) + "  " + fleet::groupText(group) + '\n';
        }
        for (const Cells& cells : std::span(lines).subspan(group.first + 1, group.size)) {
            text += lineOf(cells, widths);
        }
    }
    return text;
}

} // namespace vantor::hosts::terminal
