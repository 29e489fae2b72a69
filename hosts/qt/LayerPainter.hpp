// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/Layer.hpp"

#include <QRectF>

class QPainter;

/// Painting layers and telling what of them changed. Coordinates are points.
namespace vantor::hosts::qt {

struct Theme;

/// Draws the layers that touch `dirty`, back to front. The painter is scaled so that a unit is a point.
void paintLayers(QPainter& painter, const platform::Layers& layers, const Theme& theme, const QRectF& dirty);

/// The rectangle to repaint when `after` takes the place of `before`; empty when they look alike. Where only
/// the end of an arc moved, it is the piece between the two ends.
[[nodiscard]] QRectF changedArea(const platform::Layers& before, const platform::Layers& after);

/// The length of the longest stroke, in points: how far the end of a ring can travel.
[[nodiscard]] double longestStroke(const platform::Layers& layers);

} // namespace vantor::hosts::qt
