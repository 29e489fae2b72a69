// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Bars.hpp"
#include "hosts/terminal/picture/Parts.hpp"
#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>
#include <utility>
#include <vector>

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

Ink chartInk(const Scene::Section& section, const Look& look, Contrast contrast) {
    return hasLevel(section) ? inkOf(section.chart->arcChartViewModel->innerRingColor(), 1, look, contrast)
                             : Ink{};
}

/// A percentage that stands for a ring or a bar, and so in its colour.
Ink percentInk(const Scene::Section& section, const Look& look) {
    Ink ink = chartInk(section, look, Contrast::text);
    ink.isBold = true;
    return ink;
}

/// What is left when not even a percentage fits.
char32_t levelGlyph(const Scene::Section& section, const Look& look) {
    return hasLevel(section) ? levelGlyph(section.chart->arcChartViewModel->progress(), look)
                             : static_cast<char32_t>(noFigure[0]);
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

/// What stays together where everything is a line: a text and a figure after it.
struct Word {
    std::string text;
    std::string figure;
    Ink ink;       ///< of the figure
    int width = 0; ///< what it may take without another form being chosen
};

struct Form {
    bool hasTitles, hasSigns, hasRows;
};

std::vector<Word> wordsOf(const Scene& scene, const Form& form, const Look& look) {
    std::vector<Word> words;
    for (const Scene::Section& section : scene.sections) {
        Word word{form.hasTitles ? section.name + " " : "", percentOf(section), percentInk(section, look)};
        if (!form.hasSigns && word.figure.ends_with('%')) {
            word.figure.pop_back();
        }
        const int digits =
            std::max(displayWidth(word.figure), form.hasSigns ? percentWidth : percentWidth - 1);
        word.width = displayWidth(word.text) + digits;
        words.push_back(std::move(word));
    }
    for (const Scene::Section& section : scene.lines) {
        if (form.hasRows) {
            words.push_back({rowsText(section, Wording::signs, look.glyphs), "", {}, 0});
            words.back().width = displayWidth(words.back().text);
        }
    }
    return words;
}

/// Whether words fit into rows one after the other, each word in one row.
bool fit(const std::vector<Word>& words, int gap, int width, int rows) {
    int column = 0;
    for (const Word& word : words) {
        if (column > 0 && column + gap + word.width > width) {
            column = 0;
            --rows;
        }
        column += (column > 0 ? gap : 0) + word.width;
        if (word.width > width) {
            return false;
        }
    }
    return rows > 0;
}

void drawWords(Sheet& sheet, const std::vector<Word>& words, int gap, int row) {
    const int width = sheet.size().width;
    int reserved = 0; // as `fit` counts
    int column = 0;   // as it is drawn
    for (const Word& word : words) {
        if (reserved > 0 && reserved + gap + word.width > width) {
            reserved = column = 0;
            ++row;
        }
        const int before = reserved > 0 ? gap : 0;
        const int text = displayWidth(word.text);
        const int figure = displayWidth(word.figure);
        sheet.text({column + before, row, text}, word.text, Align::leading, {});
        sheet.text({column + before + text, row, figure}, word.figure, Align::leading, word.ink);
        reserved += before + word.width;
        column += before + text + figure;
    }
}

} // namespace

void drawBar(Sheet& sheet, const Scene::Section& section, const Box& box, platform::Instant now) {
    const double shown = hasLevel(section) ? section.chart->animation().valueAt(now) : 0;
    const Ink track = inkOf(section.chart->outerRingColor, section.chart->outerRingOpacity, sheet.look(),
                            Contrast::hairline);
    const Ink ink = chartInk(section, sheet.look(), Contrast::stroke);
    drawBar(sheet, box, shown, ink, track);
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

void drawBars(Sheet& sheet, const Scene& scene, const Layout& layout, int top, platform::Instant now) {
    const bool hasLists = layout.arrangement == Arrangement::listed;
    const int width = std::min(sheet.size().width, hasLists ? std::max(60, layout.rowWidth + 4) : 100);
    const int column = (sheet.size().width - width) / 2;
    int title = 0;
    for (const Scene::Section& section : scene.sections) {
        title = std::max(title, displayWidth(section.name));
    }
    title = std::min(title, width - percentWidth - 1);
    const int bar = width - title - percentWidth - 2;
    const bool hasTitle = title >= shortestTitle;
    const bool hasBar = bar >= shortestBar;
    const int percent = hasBar ? width - percentWidth : hasTitle ? title + 1 : 0;
    int row = top;
    for (std::size_t index = 0; index < scene.sections.size(); ++index) {
        const Scene::Section& section = scene.sections[index];
        if (hasTitle) {
            sheet.text({column, row, title}, section.name, Align::leading,
                       hasLists ? strongInk() : captionInk(sheet.look()));
        }
        if (hasBar && section.chart) {
            const Box box{column + title + 1, row, bar};
            drawBar(sheet, section, box, now);
            sheet.chartAt({index, box, true}, 2 * bar);
        }
        if (width >= percentWidth - 1) {
            sheet.text({column + percent, row, std::min(percentWidth, width)}, percentOf(section),
                       hasBar || hasTitle ? Align::trailing : Align::leading,
                       hasBar ? strongInk() : percentInk(section, sheet.look()));
        } else {
            sheet.put({0, row, 1}, 0, levelGlyph(section, sheet.look()),
                      chartInk(section, sheet.look(), Contrast::text));
        }
        if (section.action) {
            sheet.clickable({column, row, width}, *section.action);
        }
        ++row;
        if (hasLists) {
            drawRows(sheet, section, {column + 2, row, width - 2});
            row += static_cast<int>(section.rows.size()) + (layout.isRoomy ? 1 : 0);
        }
    }
    if (row < sheet.size().height) {
        drawLines(sheet, scene, {column, row, width});
    }
}

void drawLine(Sheet& sheet, const Scene& scene, const Layout& layout, int row) {
    const int width = sheet.size().width;
    for (const Form& form :
         {Form{true, true, true}, {true, true, false}, {false, true, false}, {false, false, false}}) {
        const std::vector<Word> words = wordsOf(scene, form, sheet.look());
        const int gap = form.hasTitles ? 3 : 1;
        if (fit(words, gap, width, layout.height)) {
            drawWords(sheet, words, gap, row);
            return;
        }
    }
    int column = 0;
    for (const Scene::Section& section : scene.sections) {
        if (column < width) {
            sheet.put({0, row, width}, column++, levelGlyph(section, sheet.look()),
                      chartInk(section, sheet.look(), Contrast::text));
        }
    }
}

} // namespace vantor::hosts::terminal
