// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/DotGlyphs.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <ranges>

namespace vantor::hosts::terminal {

namespace {

/// Unicode's braille patterns count down the left column, down the right one, then the fourth row.
char32_t braille(Dots dots) {
    constexpr std::array<std::uint8_t, 8> bits{0x01, 0x08, 0x02, 0x10, 0x04, 0x20, 0x40, 0x80};
    char32_t character = 0x2800;
    for (std::size_t dot = 0; dot < bits.size(); ++dot) {
        character |= (dots >> dot & 1U) != 0 ? bits[dot] : 0U;
    }
    return character;
}

/// U+1FB00 and those that follow count up, but for the three that are block elements.
char32_t sextant(Dots dots) {
    constexpr Dots leftHalf = 0b010101;
    constexpr Dots rightHalf = 0b101010;
    constexpr Dots all = 0b111111;
    switch (dots) {
    case 0:
        return U' ';
    case leftHalf:
        return U'\u258C';
    case rightHalf:
        return U'\u2590';
    case all:
        return U'\u2588';
    default:
        return 0x1FB00U + dots - 1U - (dots > leftHalf ? 1U : 0U) - (dots > rightHalf ? 1U : 0U);
    }
}

struct Element {
    Dots dots;
    char32_t character;
};

/// The patterns of eight that are block elements of their own, most of them older than octants.
constexpr std::array<Element, 26> elements{{
    {0x00, U' '},      {0x01, 0x1CEA8},   {0x02, 0x1CEAB},   {0x03, 0x1FB82},   {0x05, U'\u2598'},
    {0x0A, U'\u259D'}, {0x0F, U'\u2580'}, {0x14, 0x1FBE6},   {0x28, 0x1FBE7},   {0x3F, 0x1FB85},
    {0x40, 0x1CEA3},   {0x50, U'\u2596'}, {0x55, U'\u258C'}, {0x5A, U'\u259E'}, {0x5F, U'\u259B'},
    {0x80, 0x1CEA0},   {0xA0, U'\u2597'}, {0xA5, U'\u259A'}, {0xAA, U'\u2590'}, {0xAF, U'\u259C'},
    {0xC0, U'\u2582'}, {0xF0, U'\u2584'}, {0xF5, U'\u2599'}, {0xFA, U'\u259F'}, {0xFC, U'\u2586'},
    {0xFF, U'\u2588'},
}};

/// U+1CD00 and those that follow count up, but for these.
char32_t octant(Dots dots) {
    const auto* const element = std::ranges::lower_bound(elements, dots, {}, &Element::dots);
    if (element != elements.end() && element->dots == dots) {
        return element->character;
    }
    return 0x1CD00U + dots - static_cast<char32_t>(element - elements.begin());
}

/// The block element of every font that is nearest to the dots, the fuller one of two, so that a stroke is
/// solid up to its edge; the dots themselves where none differs by two at the most.
char32_t solid(Dots dots) {
    for (const int distance : {0, 1, 2}) {
        for (const Element& element : elements | std::views::reverse) {
            const bool isOld = element.character >= U'\u2580' && element.character <= U'\u259F';
            if (isOld && std::popcount(static_cast<Dots>(element.dots ^ dots)) == distance) {
                return element.character;
            }
        }
    }
    return braille(dots);
}

char32_t halfBlock(Dots dots) {
    const auto isLit = [dots](unsigned half) { return std::popcount(dots & half) >= 2; };
    const bool upper = isLit(0x0F);
    const bool lower = isLit(0xF0);
    return upper && lower ? U'\u2588' : upper ? U'\u2580' : lower ? U'\u2584' : U' ';
}

} // namespace

int dotRowsOf(Glyphs glyphs) {
    return glyphs == Glyphs::sextant ? 3 : 4;
}

double finenessOf(Glyphs glyphs) {
    switch (glyphs) {
    case Glyphs::braille:
    case Glyphs::octant:
        return 1;
    case Glyphs::sextant:
        return 0.8;
    default:
        return 0.5;
    }
}

char32_t strokeGlyph(Dots dots, Glyphs glyphs) {
    switch (glyphs) {
    case Glyphs::solid:
        return solid(dots);
    case Glyphs::braille:
        return braille(dots);
    case Glyphs::sextant:
        return sextant(dots);
    case Glyphs::octant:
        return octant(dots);
    case Glyphs::block:
        return halfBlock(dots);
    case Glyphs::ascii:
        break;
    }
    return std::popcount(dots) >= 3 ? U'#' : U' ';
}

char32_t lineGlyph(Dots dots, Glyphs glyphs) {
    switch (glyphs) {
    case Glyphs::block:
        return U'\u00B7';
    case Glyphs::ascii:
        return U'.';
    default:
        return braille(dots);
    }
}

} // namespace vantor::hosts::terminal
