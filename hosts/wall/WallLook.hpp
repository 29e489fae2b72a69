// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetBand.hpp"
#include "fleet/WallGrid.hpp"
#include "hosts/qt/Theme.hpp"

#include <QSize>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vantor::hosts::wall {

/// How much is told of each machine, the most first.
enum class Density : std::uint8_t {
    cards,       ///< name, three large rings, two rates
    rings,       ///< name and three small rings
    ring,        ///< the figure that gives the machine its colour
    squares,     ///< that colour alone
    smallSquares ///< the same in less room
};
inline constexpr std::size_t densityCount = 5;

/// How much room is left between machines and between groups.
enum class Spacing : std::uint8_t { usual, close };

namespace TextSize = qt::TextSize;

/// Lengths of the wall, in points.
namespace Grid {
inline constexpr double margin = 24;
inline constexpr double header = 64;
inline constexpr double footer = 42;
} // namespace Grid

/// How the wall is painted.
struct WallLook {
    qt::Theme theme;    ///< its backdrop is the ground below the machines
    QColor destructive; ///< a text, at least 4.5:1 on card and ground

    /// `accent` may be invalid.
    [[nodiscard]] static WallLook of(platform::Appearance appearance, double pointScale,
                                     const QColor& accent);

    [[nodiscard]] bool isDark() const { return theme.appearance == platform::Appearance::dark; }
    [[nodiscard]] int pixels(double points) const { return theme.pixels(points); }
    [[nodiscard]] QColor band(fleet::Band band) const;
    /// The same with yellow and green in full colour, for a figure among few.
    [[nodiscard]] QColor loudBand(fleet::Band band) const;
    /// Black or white, whichever is readable on a colour.
    [[nodiscard]] static QColor inkOn(const QColor& ground);

    /// The room that a density gives a machine, in logical pixels.
    [[nodiscard]] fleet::WallStep step(Density density, Spacing spacing = Spacing::usual) const;
    /// What of it the machine's picture takes, without the gaps.
    [[nodiscard]] QSize cell(Density density) const;
};

} // namespace vantor::hosts::wall
