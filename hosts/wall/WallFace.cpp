// SPDX-License-Identifier: MIT
#include "hosts/wall/WallFace.hpp"

#include "fleet/FleetWords.hpp"
#include "hosts/wall/WallWords.hpp"

#include <algorithm>
#include <cmath>

namespace vantor::hosts::wall {

using platform::FleetFigure;

namespace {

constexpr std::array shares{FleetFigure::memory, FleetFigure::storage, FleetFigure::processor};

/// Rounded as every other percentage is (percentText); only its colour goes by what has been reached.
std::optional<int> percentOf(const std::optional<double>& share) {
    return share ? std::optional(static_cast<int>(std::nearbyint(std::clamp(*share, 0.0, 9.99) * 100)))
                 : std::nullopt;
}

/// That of the colour; where a rate gives it, the fullest share.
std::optional<int> tellingPercent(const fleet::FleetRow& row) {
    if (row.figure && *row.figure <= FleetFigure::processor) {
        return percentOf(row.machine->figure(*row.figure));
    }
    std::optional<int> most;
    for (const FleetFigure figure : shares) {
        const std::optional<int> percent = percentOf(row.machine->figure(figure));
        most = percent && (!most || *percent > *most) ? percent : most;
    }
    return most;
}

} // namespace

Face faceOf(const fleet::FleetRow& row, Density density) {
    Face face;
    face.band = row.band;
    if (density == Density::squares || density == Density::smallSquares) {
        return face;
    }
    if (density == Density::ring) {
        face.percent = tellingPercent(row);
        return face;
    }
    const platform::FleetMachine& machine = *row.machine;
    face.name = QString::fromStdString(machine.name);
    face.note = QString::fromStdString(fleet::noteText(row));
    if (row.band == fleet::Band::down && density == Density::rings) {
        return face; // since when takes the place of the rings
    }
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const std::optional<double>& share = machine.figure(shares.at(i));
        face.percents.at(i) = percentOf(share);
        face.bands.at(i) = !share             ? fleet::Band::unknown
                           : face.isCurrent() ? fleet::shareBand(*share)
                                              : fleet::Band::stale;
    }
    if (density == Density::cards) {
        face.volume = QString::fromStdString(machine.volume);
        face.rates = {figureText(FleetFigure::received, machine.figure(FleetFigure::received)),
                      figureText(FleetFigure::sent, machine.figure(FleetFigure::sent))};
    }
    return face;
}

} // namespace vantor::hosts::wall
