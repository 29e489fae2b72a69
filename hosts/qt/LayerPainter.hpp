// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/Layer.hpp"

#include <QRectF>
#include <cstddef>
#include <optional>

class QPainter;

/// Painting layers and telling what of them changed. Coordinates are points.
namespace vantor::hosts::qt {

struct Theme;

/// Draws the layers that touch `dirty`, back to front, but for the one with the number `without`. The painter
/// is scaled so that a unit is a point.
void paintLayers(QPainter& painter, const platform::Layers& layers, const Theme& theme, const QRectF& dirty,
                 std::optional<std::size_t> without = std::nullopt);

/// The number of the stroke that moved, where nothing else differs between two pictures.
[[nodiscard]] std::optional<std::size_t> movedStroke(const platform::Layers& before,
                                                     const platform::Layers& after);

/// The rectangle to repaint when `after` takes the place of `before`; empty when they look alike. Where only
/// the end of an arc moved, it is the piece between the two ends.
[[nodiscard]] QRectF changedArea(const platform::Layers& before, const platform::Layers& after);

/// The rectangle around what changes when the end of an arc goes from one angle, in radians, to another.
[[nodiscard]] QRectF endArea(const platform::ArcSegment& arc, double lineWidth, double oldEnd, double newEnd);

/// The length of the longest stroke, in points: how far the end of a ring can travel.
[[nodiscard]] double longestStroke(const platform::Layers& layers);

} // namespace vantor::hosts::qt
