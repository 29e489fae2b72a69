// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Parts.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::hosts::terminal {

namespace {

constexpr int shortestBar = 6; // columns
constexpr int shortestTitle = 3;
constexpr int percentWidth = 4;

bool hasLevel(const Scene::Section& section) {
    return section.chart && section.isKnown;
}

std::string percentOf(const Scene::Section& section) {
    return hasLevel(section) ? percentText(section.chart->arcChartViewModel->progress()) : noFigure;
}

std::string figureOf(const Scene::Row& row) {
    return row.figure.empty() ? noFigure : row.figure;
}

std::string titleOf(const Scene::Section& section) {
    return section.chart ? section.chart->title : std::string();
}

Ink chartInk(const Scene::Section& section, const Look& look) {
    return hasLevel(section) ? inkOf(section.chart->arcChartViewModel->innerRingColor(), 1, look) : Ink{};
}

/// The characters of a bar: full, half full on the leading side, empty.
struct BarGlyphs {
    char32_t full, half, empty;
};

BarGlyphs barGlyphs(const Look& look) {
    switch (look.glyphs) {
    case Glyphs::braille:
        return {U'\u2501', look.isRightToLeft ? U'\u257A' : U'\u2578', U'\u2500'};
    case Glyphs::block:
        return {U'\u2588', look.isRightToLeft ? U'\u2590' : U'\u258C', U'\u2500'};
    case Glyphs::ascii:
        break;
    }
    return {U'#', U'#', U'-'};
}

/// One character that is higher the fuller the chart is: what is left when not even a percentage fits.
char32_t levelGlyph(const Scene::Section& section, const Look& look) {
    if (!hasLevel(section)) {
        return noFigure[0];
    }
    const double value = section.chart->arcChartViewModel->progress();
    const double pinned = value > 0 ? std::min(value, 1.0) : 0;
    if (look.glyphs != Glyphs::braille) {
        return U'0' + static_cast<char32_t>(std::min(pinned * 10, 9.0));
    }
    return U'\u2581' + static_cast<char32_t>(std::min(pinned * 8, 7.0));
}

enum class Wording : std::uint8_t { captions, signs, tight };

std::string rowsText(const Scene::Section& section, Wording wording, Glyphs glyphs) {
    const char* const gaps[] = {"    ", "  ", " "};
    std::string text;
    for (const Scene::Row& row : section.rows) {
        text += text.empty() ? "" : gaps[static_cast<std::size_t>(wording)];
        text += glyphs == Glyphs::ascii ? row.asciiSign : row.sign;
        text += wording == Wording::tight ? "" : " ";
        text += wording == Wording::captions ? row.caption + " " : "";
        text += figureOf(row);
    }
    return text;
}

/// The charts in one line, with their titles or without.
std::string chartsText(const Scene& scene, bool withTitles) {
    std::string text;
    for (const Scene::Section& section : scene.sections) {
        text += text.empty() ? "" : withTitles ? "   " : " ";
        text += withTitles ? titleOf(section) + " " : "";
        text += percentOf(section);
    }
    return text;
}

} // namespace

void drawBar(Sheet& sheet, const Scene::Section& section, const Box& box, platform::Instant now) {
    const double shown = hasLevel(section) ? section.chart->animation().valueAt(now) : 0;
    const double pinned = shown > 0 ? std::min(shown, 1.0) : 0; // not-a-number is an empty bar
    const int halves = static_cast<int>(std::lround(pinned * 2 * box.width));
    const BarGlyphs glyphs = barGlyphs(sheet.look());
    const Ink track = inkOf(section.chart->outerRingColor, section.chart->outerRingOpacity, sheet.look());
    const Ink ink = chartInk(section, sheet.look());
    for (int i = 0; i < box.width; ++i) {
        const bool isLit = 2 * i < halves;
        sheet.put(box, i,
                  2 * i + 1 < halves ? glyphs.full
                  : isLit            ? glyphs.half
                                     : glyphs.empty,
                  isLit ? ink : track);
    }
}

void drawLines(Sheet& sheet, const Scene& scene, Box box) {
    for (const Scene::Section& section : scene.lines) {
        std::string text;
        for (const Wording wording : {Wording::captions, Wording::signs, Wording::tight}) {
            text = rowsText(section, wording, sheet.look().glyphs);
            if (displayWidth(text) <= box.width) {
                break;
            }
        }
        sheet.text(box, text, Align::center, {});
        ++box.row;
    }
}

void drawRows(Sheet& sheet, const Scene::Section& section, Box box) {
    for (const Scene::Row& row : section.rows) {
        const std::string text = figureOf(row);
        const int figure = std::min(displayWidth(text), box.width);
        const int caption = std::max(0, box.width - figure - 1);
        sheet.text({box.column, box.row, caption}, row.caption, Align::leading, captionInk(sheet.look()));
        sheet.text({box.column + box.width - figure, box.row, figure}, text, Align::trailing, {});
        ++box.row;
    }
}

void drawBars(Sheet& sheet, const Scene& scene, int top, platform::Instant now) {
    const int width = std::min(sheet.size().width, 100);
    const int column = (sheet.size().width - width) / 2;
    int title = 0;
    for (const Scene::Section& section : scene.sections) {
        title = std::max(title, displayWidth(titleOf(section)));
    }
    title = std::min(title, width - percentWidth - 1);
    const int bar = width - title - percentWidth - 2;
    const bool hasTitle = title >= shortestTitle;
    const bool hasBar = bar >= shortestBar;
    const int percent = hasBar ? width - percentWidth : hasTitle ? title + 1 : 0;
    int row = top;
    for (const Scene::Section& section : scene.sections) {
        if (hasTitle) {
            sheet.text({column, row, title}, titleOf(section), Align::leading, captionInk(sheet.look()));
        }
        if (hasBar && section.chart) {
            const Box box{column + title + 1, row, bar};
            drawBar(sheet, section, box, now);
            sheet.chartAt({static_cast<std::size_t>(row - top), box, true}, 2 * bar);
        }
        if (width >= percentWidth - 1) {
            sheet.text({column + percent, row, std::min(percentWidth, width)}, percentOf(section),
                       hasBar || hasTitle ? Align::trailing : Align::leading, strongInk());
        } else {
            sheet.put({0, row, 1}, 0, levelGlyph(section, sheet.look()), chartInk(section, sheet.look()));
        }
        sheet.clickable({column, row, width}, section.action);
        ++row;
    }
    if (row < sheet.size().height) {
        drawLines(sheet, scene, {column, row, width});
    }
}

void drawLine(Sheet& sheet, const Scene& scene, int row) {
    const Box whole{0, row, sheet.size().width};
    const std::string titled = chartsText(scene, true);
    std::string everything = titled;
    for (const Scene::Section& section : scene.lines) {
        everything.append("   ").append(rowsText(section, Wording::signs, sheet.look().glyphs));
    }
    for (const std::string& text : {everything, titled, chartsText(scene, false)}) {
        if (displayWidth(text) <= whole.width) {
            sheet.text(whole, text, Align::leading, {});
            return;
        }
    }
    int column = 0;
    for (const Scene::Section& section : scene.sections) {
        if (column < whole.width) {
            sheet.put(whole, column++, levelGlyph(section, sheet.look()), chartInk(section, sheet.look()));
        }
    }
}

} // namespace vantor::hosts::terminal
