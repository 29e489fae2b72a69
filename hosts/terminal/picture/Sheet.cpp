// SPDX-License-Identifier: MIT
#include "hosts/terminal/picture/Sheet.hpp"

#include "hosts/terminal/text/DisplayText.hpp"

#include <algorithm>

namespace vantor::hosts::terminal {

int Sheet::leftOf(const Box& box) const {
    return m_look.isRightToLeft ? size().width - box.column - box.width : box.column;
}

void Sheet::text(const Box& box, std::string_view text, Align align, const Ink& ink) {
    const std::u32string shown = clippedTo(harmlessCharacters(text), box.width, m_look.ellipsis());
    int width = 0;
    for (const char32_t character : shown) {
        width += columnsOf(character);
    }
    const bool atRight = align != Align::center && (align == Align::trailing) != m_look.isRightToLeft;
    const int free = box.width - width;
    const int before = align == Align::center ? free / 2 : atRight ? free : 0;
    grid().write(leftOf(box) + before, box.row, shown, ink);
}

void Sheet::put(const Box& box, int offset, char32_t character, const Ink& ink) {
    const int left = leftOf(box);
    grid().put(m_look.isRightToLeft ? left + box.width - 1 - offset : left + offset, box.row, character, ink);
}

void Sheet::clickable(const Box& box, Action action) {
    m_picture.areas.push_back({leftOf(box), box.row, box.width, box.height, action});
}

bool Sheet::takeFromBefore(const ChartPlace& place) {
    if (m_before == nullptr || m_before->grid.size() != size() || m_before->look != m_look ||
        std::ranges::find(m_before->charts, place) == m_before->charts.end()) {
        return false;
    }
    for (int row = place.box.row; row < place.box.row + place.box.height; ++row) {
        grid().takeCells(m_before->grid, leftOf(place.box), row, place.box.width);
    }
    return true;
}

void Sheet::chartAt(const ChartPlace& place, double stepsPerUnit) {
    m_picture.charts.push_back(place);
    m_picture.stepsPerUnit = std::max(m_picture.stepsPerUnit, stepsPerUnit);
}

Ink captionInk(const Look& look) {
    return inkOf(platform::UIColor::secondaryLabelColor(), 1, look, Contrast::text);
}

Ink strongInk() {
    Ink ink;
    ink.isBold = true;
    return ink;
}

} // namespace vantor::hosts::terminal
