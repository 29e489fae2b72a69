// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Layout.hpp"

#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>

namespace vantor::hosts::terminal {

namespace {

constexpr int smallestRing = 4; // rows, with the caption: below that it is no circle any more
constexpr int largestRing = 32;
constexpr int roomyRing = 7;   // a ring gives up rows for blank lines and headings down to this size
constexpr int usualFigure = 9; // columns that a figure may take without moving anything ("123.45 GB")
constexpr int gap = 2;

/// A ring is an even number of columns wide, and so is the column in whose middle it stands.
int even(int width) {
    return width - width % 2;
}

int rowWidthOf(const Scene& scene) {
    int width = 0;
    const auto look = [&](const Scene::Section& section) {
        for (const Scene::Row& row : section.rows) {
            const int figure = std::max(displayWidth(row.figure), usualFigure);
            width = std::max(width, displayWidth(row.caption) + 1 + figure);
        }
    };
    std::ranges::for_each(scene.sections, look);
    std::ranges::for_each(scene.lines, look);
    return width;
}

int longestList(const Scene& scene) {
    std::size_t rows = 0;
    for (const Scene::Section& section : scene.sections) {
        rows = std::max(rows, section.rows.size());
    }
    return static_cast<int>(rows);
}

int wholeList(const Scene& scene) {
    std::size_t rows = 0;
    for (const auto* const sections : {&scene.sections, &scene.lines}) {
        for (const Scene::Section& section : *sections) {
            rows += section.rows.size() + 1; // and the heading
        }
    }
    return static_cast<int>(rows);
}

/// Finishes a layout whose column fits a ring of at most `widest` rows, under `lines` further lines and, if
/// there is room, `extra` blank ones. Without rings in it when they do not fit.
Layout ringsIn(Layout layout, int height, int widest, int lines, int extra) {
    const int roomy = std::min({height - lines - extra, widest, largestRing});
    const int tight = std::min({height - lines, widest, largestRing});
    layout.isRoomy = roomy >= std::min(roomyRing, tight);
    layout.ringRows = layout.isRoomy ? roomy : tight;
    layout.height = layout.ringRows + lines + (layout.isRoomy ? extra : 0);
    return layout;
}

Layout below(Layout layout, Size size) {
    layout.arrangement = Arrangement::below;
    const int widest = (size.width - (layout.columns - 1) * gap) / layout.columns;
    if (even(widest) < layout.rowWidth) {
        return layout;
    }
    layout = ringsIn(layout, size.height, widest / 2, layout.listRows + layout.lines, 4);
    layout.columnWidth = even(std::min(widest, std::max(layout.rowWidth, 2 * layout.ringRows) + 2 * gap));
    return layout;
}

Layout beside(Layout layout, Size size) {
    layout.arrangement = Arrangement::beside;
    const int widest = (size.width - 2 * layout.columns * gap) / layout.columns;
    if (size.height <= layout.listRows) {
        return layout;
    }
    layout = ringsIn(layout, size.height, (widest - gap - layout.rowWidth) / 2, layout.lines, 1);
    layout.columnWidth = 2 * layout.ringRows + gap + layout.rowWidth;
    layout.height = std::max(layout.height, layout.listRows + layout.lines);
    return layout;
}

Layout stacked(Layout layout, Size size, int list) {
    layout.arrangement = Arrangement::stacked;
    if (size.width < layout.rowWidth) {
        return layout;
    }
    const int widest = (size.width - layout.columns + 1) / layout.columns;
    layout = ringsIn(layout, size.height, widest / 2, list + 1, layout.columns + layout.lines - 1);
    layout.columnWidth = even(std::min(widest, 2 * layout.ringRows + 2 * gap));
    return layout;
}

Layout rings(Layout layout, Size size) {
    layout.arrangement = Arrangement::rings;
    const int widest = (size.width - layout.columns + 1) / layout.columns;
    layout = ringsIn(layout, size.height, widest / 2, layout.lines, 1);
    layout.columnWidth = even(std::min(widest, 2 * layout.ringRows + 2 * gap));
    return layout;
}

} // namespace

Layout layoutFor(const Scene& scene, Size size) {
    Layout start;
    start.columns = static_cast<int>(scene.sections.size());
    start.lines = static_cast<int>(scene.lines.size());
    start.hasKeys = size.height > smallestRing;
    start.listRows = longestList(scene);
    start.rowWidth = rowWidthOf(scene);
    const Size room{size.width, size.height - (start.hasKeys ? 1 : 0)};
    if (scene.isExpanded) {
        Layout best;
        for (const Layout& layout :
             {below(start, room), beside(start, room), stacked(start, room, wholeList(scene))}) {
            best = layout.ringRows > best.ringRows ? layout : best;
        }
        if (best.ringRows >= smallestRing) {
            return best;
        }
    }
    if (const Layout layout = rings(start, room); layout.ringRows >= smallestRing) {
        return layout;
    }
    start.arrangement = size.height >= start.columns ? Arrangement::bars : Arrangement::line;
    start.hasKeys = start.hasKeys && size.height > start.columns + start.lines + 1;
    start.height =
        std::min(size.height, start.arrangement == Arrangement::line ? 1 : start.columns + start.lines);
    return start;
}

} // namespace vantor::hosts::terminal
