// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/terminal/picture/Look.hpp"

#include <array>
#include <cstdint>

namespace vantor::hosts::terminal {

/// How many colours there are to tell bands apart by.
enum class WallColors : std::uint8_t {
    none,
    few,     ///< eight or sixteen, of which no two are a full and a pale one: yellow is as green
    palette, ///< xterm's 256, where the nearest to a dark green is a grey
    many
};

/// How a wall is to look on the terminal at hand.
struct WallLook {
    Look look;
    WallColors colors = WallColors::many;
    bool operator==(const WallLook&) const = default;

    /// Whether two machines, one above the other, can share a cell: in two colours.
    [[nodiscard]] bool hasHalves() const {
        return colors != WallColors::none && look.glyphs != Glyphs::ascii;
    }
};

/// The inks of a wall, worked out once for a picture. Band colours never carry text: beside them stand
/// figures, strong where they are to be seen and quiet where not.
class WallInks {
public:
    explicit WallInks(const WallLook& look);

    [[nodiscard]] const Ink& band(fleet::Band band) const {
        return m_bands.at(static_cast<std::size_t>(band));
    }
    [[nodiscard]] const Ink& track() const { return m_track; }
    [[nodiscard]] const Ink& quiet() const { return m_quiet; }
    [[nodiscard]] Ink text(fleet::Band band) const;

private:
    std::array<Ink, fleet::bandCount> m_bands;
    Ink m_track;
    Ink m_quiet;
};

/// The band of one of a machine's three shares as it is coloured while a wall is ordered so: colour follows
/// the figure that is sorted by, so the others are grey then, and so is all that is not of now.
[[nodiscard]] fleet::Band figureBand(const fleet::FleetRow& row, platform::FleetFigure figure,
                                     fleet::FleetOrder order);

} // namespace vantor::hosts::terminal
