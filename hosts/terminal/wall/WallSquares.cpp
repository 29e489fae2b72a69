// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/WallTiles.hpp"
#include "hosts/terminal/wall/WallWords.hpp"

namespace vantor::hosts::terminal {

using fleet::Band;
using fleet::FleetRow;

namespace {

constexpr char32_t upperHalf = U'\u2580';
constexpr char32_t lowerHalf = U'\u2584';

bool hasSign(const FleetRow* row) {
    return row != nullptr && *fleet::bandSign(row->band) != '\0';
}

} // namespace

char32_t bandGlyph(Band band, Glyphs glyphs) {
    const bool isAscii = glyphs == Glyphs::ascii;
    switch (band) {
    case Band::red:
        return isAscii ? U'#' : U'\u2588';
    case Band::orange:
        return isAscii ? U'=' : U'\u2593';
    case Band::yellow:
        return isAscii ? U':' : U'\u2592';
    default:
        return isAscii ? U'.' : U'\u2591';
    }
}

/// The chosen one is in the terminal's own foreground. A sign takes the whole cell, on the other's colour.
void WallTiles::pair(const FleetRow* upper, const FleetRow* lower, int column, int row,
                     const FleetRow* chosen) const {
    const Box place{column, row, 1};
    const bool isChosen = chosen != nullptr && (chosen == upper || chosen == lower);
    const FleetRow* front = isChosen ? chosen : hasSign(upper) || !hasSign(lower) ? upper : lower;
    if (front == nullptr) {
        front = lower;
    }
    const FleetRow* const back = front == upper ? lower : upper;
    Ink ink = isChosen ? Ink{} : hasSign(front) ? inks.text(front->band) : inks.band(front->band);
    if (back != nullptr && !hasSign(back)) {
        ink.ground = inks.band(back->band).rgb;
        ink.hasGround = true;
    }
    if (!isChosen && hasSign(front)) {
        ink.isBold = true;
        ink.isColored = ink.isColored && !ink.hasGround;
        sheet.text(place, signOf(front->band, look.look), Align::leading, ink);
    } else {
        sheet.put(place, 0, front == upper ? upperHalf : lowerHalf, ink);
    }
}

void WallTiles::sign(const FleetRow& row, int column, int atRow, bool isChosen) const {
    const Box place{column, atRow, 1};
    Ink ink = inks.band(row.band);
    ink.isReversed = isChosen;
    if (hasSign(&row)) {
        sheet.text(place, signOf(row.band, look.look), Align::leading, ink);
    } else {
        sheet.put(place, 0, bandGlyph(row.band, look.look.glyphs), ink);
    }
}

} // namespace vantor::hosts::terminal
