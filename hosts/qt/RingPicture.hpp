// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/RoundArc.hpp"
#include "platform/drawing/Layer.hpp"

#include <QImage>
#include <QPointF>
#include <functional>
#include <optional>

class QPainter;

namespace vantor::hosts::qt {

struct Theme;

/// Layers as an opaque image in device pixels. Arcs are drawn pixel by pixel: the toolkit hands a stroke to
/// its threads and waits for them, which costs more than the drawing.
struct RingPicture {
    QImage image;
    QPoint at;              ///< the device's pixel that the image begins at
    QPointF origin;         ///< where the widget begins on the device, in its pixels
    double pixelRatio = 1;  ///< device pixels a logical one
    double pointPixels = 1; ///< device pixels a point

    /// Of a widget of `size` logical pixels. `ground` paints what lies below the layers, in logical pixels.
    RingPicture(const QPointF& beginning, double ratio, const QSize& size, const Theme& theme,
                const std::function<void(QPainter&)>& ground);

    /// Draws layers, but for the one with the number `without`.
    void add(const platform::Layers& layers, const Theme& theme,
             std::optional<std::size_t> without = std::nullopt);
    /// Puts the picture where it belongs. The painter is that of the widget.
    void paint(QPainter& painter) const;

    /// An arc of a stroke on the device, or on this image; nothing where the stroke is another kind of line.
    [[nodiscard]] std::optional<RoundArc> arcOnDevice(const platform::StrokeLayer& stroke,
                                                      const Theme& theme) const;
};

} // namespace vantor::hosts::qt
