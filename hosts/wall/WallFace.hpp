// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetTable.hpp"
#include "hosts/wall/WallLook.hpp"

#include <QString>
#include <array>
#include <optional>

namespace vantor::hosts::wall {

/// What a machine's picture says at one density, and nothing else: two faces that are equal look alike, so
/// that only what differs is painted again.
struct Face {
    QString name;
    QString note;                               ///< beside the name: how old, or since when it is down
    std::array<std::optional<int>, 3> percents; ///< used RAM, storage, processor, 0 to 100
    std::array<fleet::Band, 3> bands{};         ///< their colours: stale where they are not of now
    std::array<QString, 2> rates;               ///< received and sent
    QString volume;                             ///< whose storage is told
    fleet::Band band = fleet::Band::unknown;
    std::optional<int> percent; ///< of the figure that gives the colour

    bool operator==(const Face&) const = default;

    /// Its figures are of now.
    [[nodiscard]] bool isCurrent() const {
        return band != fleet::Band::down && band != fleet::Band::stale && band != fleet::Band::unknown;
    }
};

[[nodiscard]] Face faceOf(const fleet::FleetRow& row, Density density);

} // namespace vantor::hosts::wall
