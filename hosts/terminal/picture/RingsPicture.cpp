// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/LayerPicture.hpp"
#include "hosts/terminal/picture/Parts.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace vantor::hosts::terminal {

namespace {

// A chart is asked for its layers in a rectangle of the size that it has in a window, so that its lines keep
// their proportions. The thick stroke overhangs the square by 5 points on each side.
constexpr platform::CGRect chartRect{{0, 0}, {90, 80}};
constexpr platform::CGRect drawnRegion{{0, -5}, {90, 90}};
constexpr double ringRadius = 40;
constexpr double ringSweep = 1.5 * std::numbers::pi;

/// The arc ends at 87 percent of the region's height and the caption stands below. On a small ring that part
/// is less than a row: the arc gets all rows but the last.
double rowsOfRegion(int ringRows) {
    constexpr double arcShare = 0.87;
    return std::min<double>(ringRows, (ringRows - 1) / arcShare);
}

void placeRing(Sheet& sheet, const Scene& scene, std::size_t index, const Box& box, platform::Instant now) {
    const Scene::Section& section = scene.sections[index];
    drawRing(sheet, section, box, now);
    sheet.clickable(box, section.action);
    sheet.chartAt({index, box, false},
                  ringSweep * ringRadius * 4 * rowsOfRegion(box.height) / drawnRegion.size.height);
}

void drawColumns(Sheet& sheet, const Scene& scene, const Layout& layout, int top, platform::Instant now) {
    const bool isBeside = layout.arrangement == Arrangement::beside;
    const int gap = isBeside ? 4 : 1;
    const int whole = layout.columns * layout.columnWidth + (layout.columns - 1) * gap;
    int column = std::max(0, (sheet.size().width - whole) / 2);
    for (std::size_t index = 0; index < scene.sections.size(); ++index) {
        const Scene::Section& section = scene.sections[index];
        const Box box{column, top, layout.columnWidth, layout.ringRows};
        column += layout.columnWidth + gap;
        if (!isBeside) {
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
    const int width = std::min(std::max(layout.columnWidth - 2, layout.rowWidth), layout.rowWidth + 4);
    int column =
        std::max(0, (sheet.size().width - layout.columns * layout.columnWidth - layout.columns + 1) / 2);
    for (const Scene::Section& section : scene.sections) {
        drawRows(sheet, section, {column + (layout.columnWidth - width) / 2, row, width});
        column += layout.columnWidth + 1;
    }
}

void drawHeadings(Sheet& sheet, const Scene& scene, const Layout& layout, int row) {
    int column =
        std::max(0, (sheet.size().width - layout.columns * layout.columnWidth - layout.columns + 1) / 2);
    for (const Scene::Section& section : scene.sections) {
        sheet.text({column, row, layout.columnWidth}, section.name, Align::center, strongInk());
        column += layout.columnWidth + 1;
    }
}

void drawStack(Sheet& sheet, const Scene& scene, const Layout& layout, int row) {
    const int width = std::min(sheet.size().width, layout.rowWidth + 6);
    const int column = (sheet.size().width - width) / 2;
    const auto list = [&](const Scene::Section& section) {
        sheet.text({column, row, width}, section.name, Align::leading, strongInk());
        drawRows(sheet, section, {column, row + 1, width});
        row += static_cast<int>(section.rows.size()) + 1 + (layout.isRoomy ? 1 : 0);
    };
    std::ranges::for_each(scene.sections, list);
    std::ranges::for_each(scene.lines, list);
}

} // namespace

void drawRing(Sheet& sheet, const Scene::Section& section, const Box& box, platform::Instant now) {
    if (!section.chart) {
        return;
    }
    const double rows = rowsOfRegion(box.height);
    LayerPlace place;
    place.region = drawnRegion;
    place.column = sheet.leftOf(box) + static_cast<int>(std::lround((box.width - 2 * rows) / 2));
    place.row = box.row;
    place.rows = rows;
    place.textWidth = box.width;
    place.lowestRow = box.row + box.height - 1;
    platform::Layers layers = section.chart->body(chartRect, now);
    if (!section.isKnown) {
        layers = withoutLevel(std::move(layers), noFigure);
    }
    drawLayers(sheet.grid(), layers, place, sheet.look());
}

void drawRings(Sheet& sheet, const Scene& scene, const Layout& layout, int top, platform::Instant now) {
    int row = top;
    if (layout.arrangement == Arrangement::below && layout.isRoomy) {
        drawHeadings(sheet, scene, layout, row++);
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
