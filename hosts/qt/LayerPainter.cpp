// SPDX-License-Identifier: MIT
#include "hosts/qt/LayerPainter.hpp"

#include "hosts/qt/Theme.hpp"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>
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
    if (before.path.arcs.size() == 1 && after.path.arcs.size() == 1) {
        const double end = after.path.arcs.front().endAngle.radians;
        StrokeLayer same = before;
        same.path.arcs.front().endAngle.radians = end;
        if (same == after) {
            return endArea(after.path.arcs.front(), after.lineWidth,
                           before.path.arcs.front().endAngle.radians, end);
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
/// Lays a text out in one line, which it may have been before.
double lineWidth(QTextLayout& layout) {
    if (layout.lineCount() == 0) {
        layout.beginLayout();
        layout.createLine().setLineWidth(1e6);
        layout.endLayout();
    }
    return layout.lineAt(0).naturalTextWidth();
}

void paintLayer(QPainter& painter, const TextLayer& layer, const Theme& theme) {
    QFont font = theme.font(1);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(layer.fontSize))));
    const QFontMetricsF metrics(font);
    std::optional<QTextLayout> line(std::in_place, QString::fromStdString(layer.text), font); // shaped once
    const double width = lineWidth(*line);
    const double room = layer.frame.size.width;
    double scale = width > 0 ? std::min(1.0, room / width) : 1.0;
    if (scale < layer.minimumScaleFactor) {
        scale = layer.minimumScaleFactor;
        line.emplace(metrics.elidedText(line->text(), Qt::ElideRight, room / scale), font);
    }
    painter.save();
    painter.translate(platform::CGRectGetMidX(layer.frame), platform::CGRectGetMidY(layer.frame));
    painter.scale(scale, scale);
    painter.setPen(painted(layer.color, theme.appearance));
    line->draw(&painter, {-lineWidth(*line) / 2, metrics.capHeight() / 2 - metrics.ascent()});
    painter.restore();
}

} // namespace

void paintLayers(QPainter& painter, const Layers& layers, const Theme& theme, const QRectF& dirty,
                 std::optional<std::size_t> without) {
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (i != without && boundsOf(layers[i]).intersects(dirty)) {
            std::visit([&](const auto& kind) { paintLayer(painter, kind, theme); }, layers[i]);
        }
    }
}

std::optional<std::size_t> movedStroke(const Layers& before, const Layers& after) {
    std::optional<std::size_t> moved;
    for (std::size_t i = 0; i < after.size() && before.size() == after.size(); ++i) {
        if (before[i] == after[i]) {
            continue;
        }
        const auto* was = std::get_if<StrokeLayer>(&before[i]);
        const auto* is = std::get_if<StrokeLayer>(&after[i]);
        if (moved || was == nullptr || is == nullptr) {
            return std::nullopt;
        }
        StrokeLayer same = *was;
        same.path = is->path;
        if (same != *is) {
            return std::nullopt;
        }
        moved = i;
    }
    return moved;
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

QRectF endArea(const ArcSegment& arc, double lineWidth, double oldEnd, double newEnd) {
    ArcSegment piece = arc;
    piece.startAngle.radians = std::min(oldEnd, newEnd);
    piece.endAngle.radians = std::max(oldEnd, newEnd);
    return widened(arcBounds(piece), lineWidth / 2 + 1);
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
