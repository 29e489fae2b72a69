// SPDX-License-Identifier: MIT
#include "hosts/qt/RoundArc.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vantor::hosts::qt {

namespace {

double distance(const QPointF& a, const QPointF& b) {
    const QPointF way = a - b;
    return std::sqrt(QPointF::dotProduct(way, way));
}

/// Positive where `b` is clockwise of `a`, by less than half a turn.
double cross(const QPointF& a, const QPointF& b) {
    return a.x() * b.y() - a.y() * b.x();
}

QRgb mixed(QRgb below, QRgb above, double share) {
    const auto weight = static_cast<int>(std::lround(share * 256));
    const auto channel = [weight](int from, int to) { return from + (to - from) * weight / 256; };
    return qRgb(channel(qRed(below), qRed(above)), channel(qGreen(below), qGreen(above)),
                channel(qBlue(below), qBlue(above)));
}

} // namespace

QPointF RoundArc::pointAt(double angle) const {
    return center + radius * QPointF(std::cos(angle), std::sin(angle));
}

/// How much of a pixel the stroke covers: by how far its middle is within the stroke's edge.
double RoundArc::coverage(const QPointF& pixel, const Ends& ends) const {
    const QPointF way = pixel - center;
    const double square = QPointF::dotProduct(way, way);
    if (square <= ends.nearest || square >= ends.farthest) {
        return 0; // most of a ring's pixels
    }
    const double fromLine = std::abs(std::sqrt(square) - radius);
    const bool afterStart = cross(ends.start - center, way) >= 0;
    const bool beforeEnd = cross(way, ends.end - center) >= 0;
    const bool beside = ends.isLong ? afterStart || beforeEnd : afterStart && beforeEnd;
    const double away = beside ? fromLine : std::min(distance(pixel, ends.start), distance(pixel, ends.end));
    return std::clamp(halfWidth + 0.5 - away, 0.0, 1.0);
}

void RoundArc::draw(QImage& target, const QRect& area, const QImage& still, const QPoint& stillAt,
                    double end) const {
    const QRect place = area & target.rect() & QRect(stillAt, still.size());
    const double opacity = end > start ? color.alphaF() : 0;
    const double inner = std::max(radius - halfWidth - 0.5, 0.0);
    const double outer = radius + halfWidth + 0.5;
    const Ends ends{pointAt(start), pointAt(end), end - start > std::numbers::pi, inner * inner,
                    outer * outer};
    for (int y = place.top(); y <= place.bottom(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(target.scanLine(y));
        if (&target != &still) {
            const auto* const from = reinterpret_cast<const QRgb*>(still.constScanLine(y - stillAt.y()));
            std::copy_n(from + place.left() - stillAt.x(), place.width(), row + place.left());
        }
        const double height = y + 0.5 - center.y();
        const double reach = ends.farthest - height * height;
        if (opacity <= 0 || reach <= 0) {
            continue;
        }
        // Where the row crosses the ring, and nowhere within it.
        const double far = std::sqrt(reach);
        const double near = std::sqrt(std::max(ends.nearest - height * height, 0.0));
        const auto pixel = [](double x) { return static_cast<int>(std::floor(x)); };
        const int middle = pixel(center.x());
        const int leftEnd = std::min(pixel(center.x() - near), middle);
        const int rightBegin = std::max(pixel(center.x() + near), middle + 1);
        const auto paint = [&](int first, int last) {
            for (int x = std::max(first, place.left()); x <= std::min(last, place.right()); ++x) {
                const double share = coverage(QPointF(x + 0.5, y + 0.5), ends) * opacity;
                if (share > 0) {
                    row[x] = mixed(row[x], color.rgb(), share);
                }
            }
        };
        paint(pixel(center.x() - far), leftEnd);
        paint(rightBegin, pixel(center.x() + far));
    }
}

} // namespace vantor::hosts::qt
