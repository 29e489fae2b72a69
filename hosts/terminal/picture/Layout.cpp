// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Layout.hpp"

#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>
#include <numeric>

namespace vantor::hosts::terminal {

namespace {

constexpr int smallestRing = 4; // rows, with the caption: below that it is no circle any more
constexpr int largestRing = 32;
constexpr int roomyRing = 7;   // a ring gives up rows for blank lines and headings down to this size
constexpr int usualFigure = 9; // columns that a figure may take without moving anything ("123.45 GB")
constexpr int gap = 2;

/// A ring is an even number of columns wide, and so is the column in whose middle it stands.
int evenAbove(int width) {
    return width + width % 2;
}
int evenBelow(int width) {
    return width - width % 2;
}

int widestRow(const Scene& scene) {
    int width = 0;
    for (const auto* const sections : {&scene.sections, &scene.lines}) {
        for (const Scene::Section& section : *sections) {
            width = std::max(width, rowWidthOf(section));
        }
    }
    return width;
}

int longestList(const Scene& scene) {
    int rows = 0;
    for (const Scene::Section& section : scene.sections) {
        rows = std::max(rows, static_cast<int>(section.rows.size()));
    }
    return rows;
}

/// The figures of all sections in one list, with a line above each section.
int wholeList(const std::vector<Scene::Section>& sections) {
    int rows = 0;
    for (const Scene::Section& section : sections) {
        rows += static_cast<int>(section.rows.size()) + 1;
    }
    return rows;
}

int sum(const std::vector<int>& widths, int between) {
    return std::accumulate(widths.begin(), widths.end(), 0) + (static_cast<int>(widths.size()) - 1) * between;
}

/// Finishes a layout whose columns fit rings of at most `widest` rows, under `lines` further lines and, if
/// there is room, `extra` blank ones. Without rings in it when they do not fit.
Layout ringsIn(Layout layout, int height, int widest, int lines, int extra) {
    const int roomy = std::min({height - lines - extra, widest, largestRing});
    const int tight = std::min({height - lines, widest, largestRing});
    layout.isRoomy = roomy >= std::min(roomyRing, tight);
    layout.ringRows = layout.isRoomy ? roomy : tight;
    layout.height = layout.ringRows + lines + (layout.isRoomy ? extra : 0);
    return layout;
}

/// The columns of rings with lists, each as wide as it needs to be.
std::vector<int> columnsFor(const Scene& scene, int ringRows) {
    std::vector<int> widths;
    widths.reserve(scene.sections.size());
    for (const Scene::Section& section : scene.sections) {
        widths.push_back(evenAbove(std::max(rowWidthOf(section), 2 * ringRows)));
    }
    return widths;
}

/// A column as wide as there is room for, up to `most`.
std::vector<int> equalColumns(const Scene& scene, int width, int between, int most) {
    const auto count = static_cast<int>(scene.sections.size());
    const int widest = (width - (count - 1) * between) / count;
    return std::vector<int>(scene.sections.size(), evenBelow(std::min(widest, most)));
}

Layout below(const Scene& scene, Layout layout, Size size) {
    layout.arrangement = Arrangement::below;
    layout.gap = gap;
    int widest = largestRing;
    while (widest >= smallestRing && sum(columnsFor(scene, widest), gap) > size.width) {
        --widest;
    }
    if (widest < smallestRing) {
        return layout;
    }
    constexpr int extra = 5; // the heading, two blank lines, and one above and below, for the name
    layout = ringsIn(layout, size.height, widest, layout.listRows + layout.lines, extra);
    if (layout.isRoomy && size.height >= layout.height + 3) {
        layout.isAiry = true;
        ++layout.height;
    }
    layout.columnWidths = columnsFor(scene, layout.ringRows);
    const auto count = static_cast<int>(layout.columnWidths.size());
    const int spare = evenBelow((size.width - sum(layout.columnWidths, gap)) / count);
    for (int& width : layout.columnWidths) {
        width += std::min(spare, 2 * gap);
    }
    return layout;
}

Layout beside(const Scene& scene, Layout layout, Size size) {
    layout.arrangement = Arrangement::beside;
    layout.gap = 2 * gap;
    const auto count = static_cast<int>(scene.sections.size());
    const int widest = (size.width - count * layout.gap) / count;
    if (size.height <= layout.listRows) {
        return layout;
    }
    layout = ringsIn(layout, size.height, (widest - gap - layout.rowWidth) / 2, layout.lines, 1);
    layout.columnWidths.assign(scene.sections.size(), 2 * layout.ringRows + gap + layout.rowWidth);
    layout.height = std::max(layout.height, layout.listRows + layout.lines);
    return layout;
}

Layout stacked(const Scene& scene, Layout layout, Size size) {
    layout.arrangement = Arrangement::stacked;
    if (size.width < layout.rowWidth) {
        return layout;
    }
    const auto count = static_cast<int>(scene.sections.size());
    const int widest = (size.width - count + 1) / count;
    layout = ringsIn(layout, size.height, widest / 2, wholeList(scene.sections) + wholeList(scene.lines) + 1,
                     count + layout.lines - 1);
    layout.columnWidths = equalColumns(scene, size.width, layout.gap, 2 * layout.ringRows + 2 * gap);
    return layout;
}

Layout rings(const Scene& scene, Layout layout, Size size) {
    layout.arrangement = Arrangement::rings;
    const auto count = static_cast<int>(scene.sections.size());
    const int widest = (size.width - count + 1) / count;
    layout = ringsIn(layout, size.height, widest / 2, layout.lines, 1);
    layout.columnWidths = equalColumns(scene, size.width, layout.gap, 2 * layout.ringRows + 2 * gap);
    return layout;
}

} // namespace

int rowWidthOf(const Scene::Section& section) {
    int width = 0;
    for (const Scene::Row& row : section.rows) {
        width =
            std::max(width, displayWidth(row.caption) + 1 + std::max(displayWidth(row.figure), usualFigure));
    }
    return width;
}

Layout layoutFor(const Scene& scene, Size size, bool isExpanded) {
    Layout start;
    start.lines = static_cast<int>(scene.lines.size());
    start.hasKeys = size.height > smallestRing;
    start.listRows = longestList(scene);
    start.rowWidth = widestRow(scene);
    const Size room{size.width, size.height - (start.hasKeys ? 1 : 0)};
    const auto charts = static_cast<int>(scene.sections.size());
    if (isExpanded) {
        Layout best;
        for (const Layout& layout :
             {below(scene, start, room), beside(scene, start, room), stacked(scene, start, room)}) {
            best = layout.ringRows > best.ringRows ? layout : best;
        }
        if (best.ringRows >= smallestRing) {
            return best;
        }
        const int list = wholeList(scene.sections) + start.lines;
        if (room.height >= list && room.width > start.rowWidth) {
            start.arrangement = Arrangement::listed;
            start.isRoomy = room.height >= list + charts;
            start.height = list + (start.isRoomy ? charts : 0);
            return start;
        }
    }
    if (Layout layout = rings(scene, start, room); layout.ringRows >= smallestRing) {
        return layout;
    }
    start.arrangement = size.height >= charts ? Arrangement::bars : Arrangement::line;
    start.hasKeys = start.hasKeys && size.height > charts + start.lines + 1;
    start.height = start.arrangement == Arrangement::line ? std::min(size.height, 2)
                                                          : std::min(size.height, charts + start.lines);
    return start;
}

} // namespace vantor::hosts::terminal
