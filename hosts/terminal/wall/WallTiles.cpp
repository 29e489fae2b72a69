// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/WallTiles.hpp"

#include "charts/ArcChartStyle.hpp"
#include "fleet/FleetWords.hpp"
#include "hosts/terminal/picture/Bars.hpp"
#include "hosts/terminal/picture/LayerPicture.hpp"
#include "hosts/terminal/picture/Parts.hpp"
#include "hosts/terminal/wall/WallWords.hpp"

#include <algorithm>
#include <array>
#include <numbers>
#include <string>
#include <utility>

namespace vantor::hosts::terminal {

using fleet::Band;
using fleet::FleetOrder;
using fleet::FleetRow;
using platform::FleetFigure;

namespace {

constexpr std::array<FleetFigure, 3> shares{FleetFigure::memory, FleetFigure::storage,
                                            FleetFigure::processor};
constexpr int percentWidth = 4; // "100%"

} // namespace

/// The sign, which none but a machine that is not of now has, and the name behind it.
void WallTiles::name(const FleetRow& row, const Box& box, int signWidth, bool isChosen) const {
    Ink ink = inks.text(row.band);
    if (row.band != Band::stale && row.band != Band::unknown && !ink.isBold) {
        ink = {};
    }
    ink.isReversed = isChosen;
    if (isChosen) {
        ink = {.isBold = true, .isReversed = true};
        sheet.text(box, std::string(static_cast<std::size_t>(std::max(box.width, 0)), ' '), Align::leading,
                   ink);
    }
    Ink signInk = ink;
    signInk.isBold = true;
    sheet.text({box.column, box.row, 1}, signOf(row.band, look.look), Align::leading, signInk);
    sheet.text({box.column + signWidth, box.row, box.width - signWidth}, row.machine->name, Align::leading,
               ink);
}

void WallTiles::bar(const FleetRow& row, FleetFigure figure, const Box& box) const {
    drawBar(sheet, box, row.machine->figure(figure).value_or(0), inks.band(figureBand(row, figure, order)),
            inks.track());
}

void WallTiles::percent(const FleetRow& row, FleetFigure figure, const Box& box, bool hasSign) const {
    sheet.text(box, shareText(row.machine->figure(figure), look.look, hasSign), Align::trailing,
               inks.text(figureBand(row, figure, order)));
}

void WallTiles::line(const FleetRow& row, const Box& box, bool isChosen) const {
    constexpr int ratesWidth = 21;
    constexpr int leastName = 10; // with the sign
    constexpr int leastBar = 3;
    constexpr int count = static_cast<int>(shares.size());
    const int width = box.width - 1;
    const bool hasRates = width >= leastName + count * (leastBar + percentWidth + 2) + ratesWidth;
    const int room = width - (hasRates ? ratesWidth + 1 : 0);
    const int bar = std::clamp((room - leastName) / count - percentWidth - 2, 0, 12);
    const int figures = count * (bar + percentWidth + 1 + (bar > 0 ? 1 : 0));
    const int nameWidth = std::max(room - figures, std::min(leastName, room));
    name(row, {box.column, box.row, std::min(nameWidth, 32)}, 2, isChosen);
    if (row.band == Band::down) {
        sheet.text({box.column + nameWidth + 1, box.row, width - nameWidth - 1},
                   downWords(*row.machine, look.look), Align::leading, inks.quiet());
        return;
    }
    int column = box.column + nameWidth + 1;
    for (const FleetFigure figure : shares) {
        if (bar > 0) {
            this->bar(row, figure, {column, box.row, bar});
            column += bar;
        }
        if (column + percentWidth <= box.column + width) {
            percent(row, figure, {column, box.row, percentWidth}, true);
        }
        column += percentWidth + 1 + (bar > 0 ? 1 : 0);
    }
    if (hasRates) {
        const Ink ink = order == FleetOrder::network ? strongInk() : inks.quiet();
        const int half = ratesWidth / 2;
        column = box.column + width - ratesWidth;
        sheet.text({column, box.row, half}, rateText(*row.machine, FleetFigure::received, look.look),
                   Align::trailing, ink);
        sheet.text({column + half + 1, box.row, half}, rateText(*row.machine, FleetFigure::sent, look.look),
                   Align::trailing, ink);
    }
}

/// The level where the terminal has a glyph for it; digits would run into the percentages.
char32_t WallTiles::levelOrBand(double share, Band band) const {
    const Glyphs glyphs = look.look.glyphs;
    return glyphs == Glyphs::ascii || glyphs == Glyphs::block ? bandGlyph(band, glyphs)
                                                              : levelGlyph(share, look.look);
}

/// The figures' last column is the gap, which the next machine's sign, a line higher, does not touch.
void WallTiles::cell(const FleetRow& row, const Box& box, bool isChosen) const {
    constexpr int signWidth = 1;
    name(row, {box.column, box.row, box.width - 1}, signWidth, isChosen);
    Box place{box.column + signWidth, box.row + 1, 1};
    if (row.band == Band::down) {
        place.width = box.width - signWidth - 1;
        sheet.text(place, downBriefly(*row.machine), Align::leading, inks.quiet());
        return;
    }
    for (const FleetFigure figure : shares) {
        const std::optional<double>& share = row.machine->figure(figure);
        const Band band = figureBand(row, figure, order);
        sheet.put(place, 0, share ? levelOrBand(*share, band) : U' ', inks.band(band));
        ++place.column;
    }
    place.width = percentWidth;
    for (const FleetFigure figure : shares) {
        percent(row, figure, place, false);
        place.column += place.width;
    }
}

/// A ring's box is twice as wide as high.
void WallTiles::ring(const FleetRow& row, FleetFigure figure, const Box& box) const {
    const Band band = figureBand(row, figure, order);
    const std::optional<double>& share = row.machine->figure(figure);
    const ArcChartStyle style{
        .startAngle = {0.75 * std::numbers::pi},
        .endAngle = {0.25 * std::numbers::pi},
        .outerRingLineWidth = 2,
        .outerRingOpacity = 0.3,
        .innerRingLineWidth = 10,
        .innerRingColor = fleet::bandColor(band, look.look.appearance == platform::Appearance::dark),
        .title = fleet::figureName(figure),
        .titleColor = platform::UIColor::secondaryLabelColor(),
        .titleTopPadding = 8,
    };
    const double shown = share.value_or(0);
    platform::Layers layers = style.body({shown, shown}, platform::squareInside(ringRect));
    if (!share) {
        layers = withoutLevel(std::move(layers), shareText(share, look.look));
    }
    drawRingLayers(sheet, layers, box, style.innerRingLineWidth);
}

void WallTiles::rings(const FleetRow& row, const Box& box, bool isChosen) const {
    constexpr int ringRows = 4;
    const int width = box.width - 1;
    name(row, {box.column, box.row, width}, 2, isChosen);
    if (row.band == Band::down) {
        int line = box.row + 1;
        for (const std::string& text : wrapped(downWords(*row.machine, look.look), width - 2, ringRows)) {
            sheet.text({box.column + 2, line++, width - 2}, text, Align::leading, inks.quiet());
        }
        return;
    }
    constexpr int count = static_cast<int>(shares.size());
    const int pitch = std::min(width / count, 2 * ringRows + 1);
    int column = box.column;
    for (const FleetFigure figure : shares) {
        ring(row, figure, {column, box.row + 1, std::min(pitch, 2 * ringRows), ringRows});
        column += pitch;
    }
}

} // namespace vantor::hosts::terminal
