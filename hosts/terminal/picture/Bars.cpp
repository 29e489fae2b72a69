// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Bars.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::hosts::terminal {

namespace {

/// The characters of a bar: full, half full on the leading side, empty.
struct BarGlyphs {
    char32_t full, half, empty;
};

BarGlyphs barGlyphs(const Look& look) {
    switch (look.glyphs) {
    case Glyphs::block:
        return {U'\u2588', look.isRightToLeft ? U'\u2590' : U'\u258C', U'\u2500'};
    case Glyphs::ascii:
        return {U'#', U'#', U'-'};
    default:
        return {U'\u2501', look.isRightToLeft ? U'\u257A' : U'\u2578', U'\u2500'};
    }
}

double pinned(double share) {
    return share > 0 ? std::min(share, 1.0) : 0; // not-a-number as well
}

} // namespace

void drawBar(Sheet& sheet, const Box& box, double share, const Ink& ink, const Ink& track) {
    const int halves = static_cast<int>(std::lround(pinned(share) * 2 * box.width));
    const BarGlyphs glyphs = barGlyphs(sheet.look());
    for (int i = 0; i < box.width; ++i) {
        const bool isLit = 2 * i < halves;
        sheet.put(box, i,
                  2 * i + 1 < halves ? glyphs.full
                  : isLit            ? glyphs.half
                                     : glyphs.empty,
                  isLit ? ink : track);
    }
}

char32_t levelGlyph(double share, const Look& look) {
    if (look.glyphs == Glyphs::block || look.glyphs == Glyphs::ascii) {
        return U'0' + static_cast<char32_t>(std::min(pinned(share) * 10, 9.0));
    }
    return U'\u2581' + static_cast<char32_t>(std::min(pinned(share) * 8, 7.0));
}

} // namespace vantor::hosts::terminal
