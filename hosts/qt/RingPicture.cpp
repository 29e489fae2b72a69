// SPDX-License-Identifier: MIT
#include "hosts/qt/RingPicture.hpp"

#include "hosts/qt/LayerPainter.hpp"
#include "hosts/qt/Theme.hpp"

#include <QPainter>
#include <cmath>

namespace vantor::hosts::qt {

using platform::Layers;
using platform::StrokeLayer;

namespace {

QPoint firstPixel(const QPointF& origin) {
    return {static_cast<int>(std::floor(origin.x())), static_cast<int>(std::floor(origin.y()))};
}

} // namespace

// Where a device pixel is a fraction of a logical one, the widget need not begin at a whole device pixel; the
// image does.
RingPicture::RingPicture(const QPointF& beginning, double ratio, const QSize& size, const Theme& theme,
                         const std::function<void(QPainter&)>& ground)
    : at(firstPixel(beginning)), origin(beginning), pixelRatio(ratio), pointPixels(ratio * theme.pointScale) {
    const QPointF end = origin + QPointF(size.width(), size.height()) * pixelRatio;
    image = QImage(static_cast<int>(std::ceil(end.x())) - at.x(),
                   static_cast<int>(std::ceil(end.y())) - at.y(), QImage::Format_RGB32);
    image.fill(theme.card);
    if (ground) {
        QPainter painter(&image);
        painter.translate(origin - at);
        painter.scale(pixelRatio, pixelRatio);
        ground(painter);
    }
}

void RingPicture::add(const Layers& layers, const Theme& theme, std::optional<std::size_t> without) {
    std::optional<QPainter> painter;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (i == without) {
            continue;
        }
        const auto* stroke = std::get_if<StrokeLayer>(&layers[i]);
        if (std::optional<RoundArc> arc = stroke != nullptr ? arcOnDevice(*stroke, theme) : std::nullopt) {
            painter.reset();
            arc->center -= at;
            arc->draw(image, image.rect(), image, {}, arc->start + stroke->path.arcs.front().sweep());
            continue;
        }
        if (!painter) {
            painter.emplace(&image);
            painter->translate(origin - at);
            painter->scale(pointPixels, pointPixels);
        }
        paintLayers(*painter, {layers[i]}, theme, QRectF(-1e6, -1e6, 2e6, 2e6));
    }
}

void RingPicture::paint(QPainter& painter) const {
    painter.save();
    painter.scale(1 / pixelRatio, 1 / pixelRatio);
    painter.drawImage(at - origin, image);
    painter.restore();
}

std::optional<RoundArc> RingPicture::arcOnDevice(const StrokeLayer& stroke, const Theme& theme) const {
    if (stroke.path.arcs.size() != 1 || stroke.lineCap != platform::LineCap::round ||
        stroke.path.arcs.front().clockwise) {
        return std::nullopt;
    }
    const platform::ArcSegment& arc = stroke.path.arcs.front();
    return RoundArc{origin + QPointF(arc.center.x, arc.center.y) * pointPixels, arc.radius * pointPixels,
                    stroke.lineWidth / 2 * pointPixels, arc.startAngle.radians,
                    painted(stroke.color, theme.appearance, stroke.opacity)};
}

} // namespace vantor::hosts::qt
