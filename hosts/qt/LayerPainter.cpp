// SPDX-License-Identifier: MIT
#include "hosts/qt/LayerPainter.hpp"

#include "hosts/qt/Theme.hpp"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace vantor::hosts::qt {

using platform::ArcSegment;
using platform::Layer;
using platform::Layers;
using platform::StrokeLayer;
using platform::TextLayer;

namespace {

QRectF rectangle(const platform::CGRect& rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

QPainterPath painterPath(const platform::Path& path) {
    constexpr double degrees = -180 / std::numbers::pi; // the toolkit's angles grow the other way
    QPainterPath result;
    for (const ArcSegment& arc : path.arcs) {
        const QRectF circle(arc.center.x - arc.radius, arc.center.y - arc.radius, 2 * arc.radius,
                            2 * arc.radius);
        result.arcMoveTo(circle, arc.startAngle.radians * degrees);
        result.arcTo(circle, arc.startAngle.radians * degrees, arc.sweep() * degrees);
    }
    return result;
}

/// The box around an arc, by its ends and the extremes of the circle that it passes.
QRectF arcBounds(const ArcSegment& arc) {
    constexpr double quarter = std::numbers::pi / 2;
    const double sweep = arc.sweep();
    const double first = std::min(arc.startAngle.radians, arc.startAngle.radians + sweep);
    const double last = first + std::abs(sweep);
    const auto pointAt = [&](double angle) {
        return QPointF(arc.center.x + arc.radius * std::cos(angle),
                       arc.center.y + arc.radius * std::sin(angle));
    };
    QRectF box(pointAt(first), pointAt(first));
    const auto include = [&box](const QPointF& point) {
        box.setCoords(std::min(box.left(), point.x()), std::min(box.top(), point.y()),
                      std::max(box.right(), point.x()), std::max(box.bottom(), point.y()));
    };
    include(pointAt(last));
    for (double angle = std::ceil(first / quarter) * quarter; angle < last; angle += quarter) {
        include(pointAt(angle));
    }
    return box;
}

QRectF widened(const QRectF& box, double by) {
    return box.adjusted(-by, -by, by, by);
}

QRectF boundsOf(const StrokeLayer& layer) {
    QRectF box;
    for (const ArcSegment& arc : layer.path.arcs) {
        box |= widened(arcBounds(arc), layer.lineWidth / 2 + 1);
    }
    return box;
}

QRectF boundsOf(const TextLayer& layer) {
    return widened(rectangle(layer.frame), 1);
}

QRectF boundsOf(const Layer& layer) {
    return std::visit([](const auto& kind) { return boundsOf(kind); }, layer);
}

/// The piece between the two ends of strokes that differ in nothing else.
QRectF movedEnd(const StrokeLayer& before, const StrokeLayer& after) {
    StrokeLayer piece = after;
    if (before.path.arcs.size() == 1 && after.path.arcs.size() == 1) {
        ArcSegment& arc = piece.path.arcs.front();
        const platform::Angle end = before.path.arcs.front().endAngle;
        StrokeLayer same = before;
        same.path.arcs.front().endAngle = arc.endAngle;
        if (same == after) {
            arc.startAngle = std::min(end.radians, arc.endAngle.radians) == end.radians ? end : arc.endAngle;
            arc.endAngle.radians = std::max(end.radians, arc.endAngle.radians);
            return boundsOf(piece);
        }
    }
    return boundsOf(before) | boundsOf(after);
}

void paintLayer(QPainter& painter, const StrokeLayer& layer, const Theme& theme) {
    constexpr Qt::PenCapStyle caps[] = {Qt::FlatCap, Qt::RoundCap, Qt::SquareCap};
    constexpr Qt::PenJoinStyle joins[] = {Qt::MiterJoin, Qt::RoundJoin, Qt::BevelJoin};
    if (layer.path.arcs.empty()) {
        return;
    }
    QPen pen(painted(layer.color, theme.appearance, layer.opacity), layer.lineWidth, Qt::SolidLine,
             caps[static_cast<int>(layer.lineCap)], joins[static_cast<int>(layer.lineJoin)]);
    pen.setMiterLimit(layer.miterLimit);
    painter.strokePath(painterPath(layer.path), pen);
}

/// The font is made at a whole size and the painter scaled to the rest, so that a shrunken text keeps its
/// proportions.
void paintLayer(QPainter& painter, const TextLayer& layer, const Theme& theme) {
    QFont font = theme.font(1);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(layer.fontSize))));
    const QFontMetricsF metrics(font);
    QString text = QString::fromStdString(layer.text);
    const double width = metrics.horizontalAdvance(text);
    const double room = layer.frame.size.width;
    double scale = width > 0 ? std::min(1.0, room / width) : 1.0;
    if (scale < layer.minimumScaleFactor) {
        scale = layer.minimumScaleFactor;
        text = metrics.elidedText(text, Qt::ElideRight, room / scale);
    }
    painter.save();
    painter.translate(platform::CGRectGetMidX(layer.frame), platform::CGRectGetMidY(layer.frame));
    painter.scale(scale, scale);
    painter.setFont(font);
    painter.setPen(painted(layer.color, theme.appearance));
    painter.drawText(QPointF(-metrics.horizontalAdvance(text) / 2, metrics.capHeight() / 2), text);
    painter.restore();
}

} // namespace

void paintLayers(QPainter& painter, const Layers& layers, const Theme& theme, const QRectF& dirty) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (const Layer& layer : layers) {
        if (boundsOf(layer).intersects(dirty)) {
            std::visit([&](const auto& kind) { paintLayer(painter, kind, theme); }, layer);
        }
    }
}

QRectF changedArea(const Layers& before, const Layers& after) {
    QRectF area;
    for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        if (i >= before.size() || i >= after.size()) {
            area |= boundsOf(i < before.size() ? before[i] : after[i]);
        } else if (before[i] != after[i]) {
            const auto* was = std::get_if<StrokeLayer>(&before[i]);
            const auto* is = std::get_if<StrokeLayer>(&after[i]);
            area |= was != nullptr && is != nullptr ? movedEnd(*was, *is)
                                                    : boundsOf(before[i]) | boundsOf(after[i]);
        }
    }
    return area;
}

double longestStroke(const Layers& layers) {
    double longest = 0;
    for (const Layer& layer : layers) {
        if (const auto* stroke = std::get_if<StrokeLayer>(&layer)) {
            double length = 0;
            for (const ArcSegment& arc : stroke->path.arcs) {
                length += std::abs(arc.sweep()) * arc.radius;
            }
            longest = std::max(longest, length);
        }
    }
    return longest;
}

} // namespace vantor::hosts::qt
