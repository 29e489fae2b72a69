// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Sheet.hpp"
#include "hosts/terminal/wall/WallInks.hpp"

namespace vantor::hosts::terminal {

/// What stands for a band where there are no two colours in a cell: the fuller the worse.
[[nodiscard]] char32_t bandGlyph(fleet::Band band, Glyphs glyphs);

/// What the machines of one picture have in common.
struct WallTiles {
    WallTiles(Sheet& target, const WallLook& wallLook, fleet::FleetOrder wallOrder)
        : sheet(target), look(wallLook), order(wallOrder), inks(wallLook) {}

    Sheet& sheet;
    const WallLook& look;
    fleet::FleetOrder order;
    WallInks inks;

    /// A machine in its place, of which the last column, and of rings the last row, stays blank.
    void rings(const fleet::FleetRow& row, const Box& box, bool isChosen) const;
    void line(const fleet::FleetRow& row, const Box& box, bool isChosen) const;
    void cell(const fleet::FleetRow& row, const Box& box, bool isChosen) const;

    /// Two machines one above the other in one cell, of which either may be none; colours of a few signs.
    void pair(const fleet::FleetRow* upper, const fleet::FleetRow* lower, int column, int row,
              const fleet::FleetRow* chosen) const;
    /// One machine in a cell, by a character.
    void sign(const fleet::FleetRow& row, int column, int atRow, bool isChosen) const;

private:
    [[nodiscard]] char32_t levelOrBand(double share, fleet::Band band) const;
    void name(const fleet::FleetRow& row, const Box& box, int signWidth, bool isChosen) const;
    void ring(const fleet::FleetRow& row, platform::FleetFigure figure, const Box& box) const;
    void bar(const fleet::FleetRow& row, platform::FleetFigure figure, const Box& box) const;
    void percent(const fleet::FleetRow& row, platform::FleetFigure figure, const Box& box,
                 bool hasSign) const;
};

} // namespace vantor::hosts::terminal
