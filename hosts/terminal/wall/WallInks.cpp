// SPDX-License-Identifier: MIT
#include "hosts/terminal/wall/WallInks.hpp"

#include "hosts/terminal/picture/Sheet.hpp"

#include <optional>

namespace vantor::hosts::terminal {

using fleet::Band;
using fleet::FleetOrder;
using platform::FleetFigure;

namespace {

/// Where there are few colours: what is nearest to a pale one is black or white.
std::optional<std::uint32_t> plainColor(Band band) {
    switch (band) {
    case Band::red:
        return 0xFF0000;
    case Band::orange:
        return 0xC4A000;
    case Band::yellow:
    case Band::green:
        return 0x00CD00;
    default:
        return std::nullopt;
    }
}

std::optional<FleetFigure> figureOf(FleetOrder order) {
    switch (order) {
    case FleetOrder::memory:
        return FleetFigure::memory;
    case FleetOrder::storage:
        return FleetFigure::storage;
    case FleetOrder::processor:
        return FleetFigure::processor;
    case FleetOrder::network:
        return FleetFigure::received;
    default:
        return std::nullopt;
    }
}

} // namespace

WallInks::WallInks(const WallLook& look) : m_quiet(captionInk(look.look)) {
    const bool isDark = look.look.appearance == platform::Appearance::dark;
    for (std::size_t index = 0; index < m_bands.size(); ++index) {
        const auto band = static_cast<Band>(index);
        Ink& ink = m_bands.at(index);
        const std::optional<std::uint32_t> plain = plainColor(band);
        if (look.colors == WallColors::few) {
            ink = plain ? Ink{.rgb = *plain, .isColored = true} : band == Band::down ? Ink{} : m_quiet;
        } else {
            ink = inkOf(fleet::bandColor(band, isDark), 1, look.look, Contrast::stroke);
        }
        if (look.colors == WallColors::palette && band == Band::green && isDark) {
            constexpr std::uint32_t darkGreen = 0x005F00; // number 22
            ink.rgb = darkGreen;
        }
    }
    constexpr double trackOpacity = 0.3; // as of the rings
    m_track = inkOf(platform::UIColor::secondaryLabelColor(), trackOpacity, look.look, Contrast::stroke);
}

Ink WallInks::text(Band band) const {
    const bool isStrong = band == Band::down || band == Band::red || band == Band::orange;
    return isStrong ? strongInk() : m_quiet;
}

Band figureBand(const fleet::FleetRow& row, FleetFigure figure, FleetOrder order) {
    const bool isOfNow = row.band != Band::down && row.band != Band::stale;
    const std::optional<double>& share = row.machine->figure(figure);
    const std::optional<FleetFigure> sorted = figureOf(order);
    return isOfNow && share && (!sorted || sorted == figure) ? fleet::shareBand(*share) : Band::stale;
}

} // namespace vantor::hosts::terminal
