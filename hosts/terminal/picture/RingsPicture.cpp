// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/DotGlyphs.hpp"
#include "hosts/terminal/picture/LayerPicture.hpp"
#include "hosts/terminal/picture/Parts.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>
#include <vector>

namespace vantor::hosts::terminal {

namespace {

// The thick stroke overhangs the square by 5 points on each side.
constexpr platform::CGRect drawnRegion{{0, -5}, {90, 90}};
constexpr double ringRadius = 40;
constexpr double figureMargin = 3;
constexpr double ringSweep = 1.5 * std::numbers::pi;

/// The arc ends at 87 percent of the region's height and the caption stands below. On a small ring that part
/// is less than a row: the arc gets all rows but the last.
double rowsOfRegion(int ringRows) {
    constexpr double arcShare = 0.87;
    return std::min<double>(ringRows, (ringRows - 1) / arcShare);
}

void placeRing(Sheet& sheet, const Scene& scene, std::size_t index, const Box& box, platform::Instant now) {
    const Scene::Section& section = scene.sections[index];
    const ChartPlace chart{index, box, false, ringLayers(section, now)};
    if (!sheet.takeFromBefore(chart)) {
        drawRing(sheet, section, chart);
    }
    if (section.action) {
        sheet.clickable(box, *section.action);
    }
    sheet.chartAt(chart, ringSweep * ringRadius * 4 * rowsOfRegion(box.height) / drawnRegion.size.height *
                             finenessOf(sheet.look().glyphs));
}

/// The boxes of a row's columns, centred as a whole.
std::vector<Box> columnsAt(const Sheet& sheet, const Layout& layout, int row) {
    int whole = -layout.gap;
    for (const int width : layout.columnWidths) {
        whole += width + layout.gap;
    }
    std::vector<Box> boxes;
    int column = std::max(0, (sheet.size().width - whole) / 2);
    for (const int width : layout.columnWidths) {
        boxes.push_back({column, row, width, layout.ringRows});
        column += width + layout.gap;
    }
    return boxes;
}

void drawColumns(Sheet& sheet, const Scene& scene, const Layout& layout, int top, platform::Instant now) {
    const std::vector<Box> boxes = columnsAt(sheet, layout, top);
    for (std::size_t index = 0; index < scene.sections.size(); ++index) {
        const Scene::Section& section = scene.sections[index];
        const Box& box = boxes[index];
        if (layout.arrangement != Arrangement::beside) {
            placeRing(sheet, scene, index, box, now);
            continue;
        }
        placeRing(sheet, scene, index, {box.column, top, 2 * layout.ringRows, layout.ringRows}, now);
        const int rows = static_cast<int>(section.rows.size());
        drawRows(sheet, section,
                 {box.column + box.width - layout.rowWidth, top + std::max(0, (layout.ringRows - rows) / 2),
                  layout.rowWidth});
    }
}

/// The figures below the rings, each list as wide as its ring unless it needs more.
void drawLists(Sheet& sheet, const Scene& scene, const Layout& layout, int row) {
    const std::vector<Box> boxes = columnsAt(sheet, layout, row);
    for (std::size_t index = 0; index < scene.sections.size(); ++index) {
        const Box& box = boxes[index];
        const int needed = rowWidthOf(scene.sections[index]);
        const int width = std::min(std::max(box.width - 2, needed), needed + 4);
        drawRows(sheet, scene.sections[index], {box.column + (box.width - width) / 2, row, width});
    }
}

void drawHeadings(Sheet& sheet, const Scene& scene, const Layout& layout, int row) {
    const std::vector<Box> boxes = columnsAt(sheet, layout, row);
    for (std::size_t index = 0; index < scene.sections.size(); ++index) {
        drawHeading(sheet, scene.sections[index], boxes[index], Align::center);
    }
}

void drawStack(Sheet& sheet, const Scene& scene, const Layout& layout, int row) {
    const int width = std::min(sheet.size().width, layout.rowWidth + 6);
    const int column = (sheet.size().width - width) / 2;
    const auto list = [&](const Scene::Section& section) {
        drawHeading(sheet, section, {column, row, width}, Align::leading);
        drawRows(sheet, section, {column, row + 1, width});
        row += static_cast<int>(section.rows.size()) + 1 + (layout.isRoomy ? 1 : 0);
    };
    std::ranges::for_each(scene.sections, list);
    std::ranges::for_each(scene.lines, list);
}

} // namespace

/// None without a chart.
platform::Layers ringLayers(const Scene::Section& section, platform::Instant now) {
    platform::Layers layers = section.chart ? section.chart->body(ringRect, now) : platform::Layers();
    return section.isKnown ? layers : withoutLevel(std::move(layers), noFigure);
}

void drawRing(Sheet& sheet, const Scene::Section& section, const ChartPlace& chart) {
    if (section.chart) {
        drawRingLayers(sheet, chart.layers, chart.box, section.chart->innerRingLineWidth);
    }
}

void drawRingLayers(Sheet& sheet, const platform::Layers& layers, const Box& box, double lineWidth) {
    const double rows = rowsOfRegion(box.height);
    LayerPlace place;
    place.region = drawnRegion;
    place.column = sheet.leftOf(box) + static_cast<int>(std::lround((box.width - 2 * rows) / 2));
    place.row = box.row;
    place.rows = rows;
    place.room = ringRadius - lineWidth / 2 - figureMargin;
    place.textWidth = box.width;
    place.lowestRow = box.row + box.height - 1;
    drawLayers(sheet.grid(), layers, place, sheet.look());
}

void drawHeading(Sheet& sheet, const Scene::Section& section, const Box& box, Align align) {
    const int name = displayWidth(section.name);
    const int note = section.note.empty() ? 0 : displayWidth(section.note) + 1;
    if (note == 0 || name + note > box.width) {
        sheet.text(box, section.name, align, strongInk());
        return;
    }
    const int column = box.column + (align == Align::center ? (box.width - name - note) / 2 : 0);
    sheet.text({column, box.row, name}, section.name, Align::leading, strongInk());
    sheet.text({column + name + 1, box.row, note - 1}, section.note, Align::leading,
               captionInk(sheet.look()));
}

void drawRings(Sheet& sheet, const Scene& scene, const Layout& layout, int top, platform::Instant now) {
    int row = top;
    if (layout.arrangement == Arrangement::below && layout.isRoomy) {
        drawHeadings(sheet, scene, layout, row++);
        row += layout.isAiry ? 1 : 0;
    }
    drawColumns(sheet, scene, layout, row, now);
    row += layout.ringRows;
    if (layout.arrangement == Arrangement::stacked) {
        drawStack(sheet, scene, layout, row + 1);
        return;
    }
    if (layout.arrangement == Arrangement::below) {
        row += layout.isRoomy ? 1 : 0;
        drawLists(sheet, scene, layout, row);
        row += layout.listRows;
    } else {
        row = std::max(row, top + layout.height - layout.lines - (layout.isRoomy ? 1 : 0));
    }
    drawLines(sheet, scene, {0, row + (layout.isRoomy ? 1 : 0), sheet.size().width});
}

} // namespace vantor::hosts::terminal
