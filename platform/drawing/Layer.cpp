// SPDX-License-Identifier: MIT
#include "platform/drawing/Layer.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace vantor::platform {

namespace {

double pinned(double fraction) {
    return fraction > 0 ? std::min(fraction, 1.0) : 0.0;
}

double length(const ArcSegment& arc) {
    return std::abs(arc.sweep()) * arc.radius;
}

} // namespace

double ArcSegment::sweep() const {
    constexpr double turn = 2 * std::numbers::pi;
    const double difference = endAngle.radians - startAngle.radians;
    if (std::abs(difference) >= turn) {
        return clockwise ? -turn : turn;
    }
    const double forward = difference < 0 ? difference + turn : difference;
    return !clockwise || forward == 0 ? forward : forward - turn;
}

void Path::addArc(CGPoint center, double radius, Angle startAngle, Angle endAngle, bool clockwise) {
    arcs.push_back({center, radius, startAngle, endAngle, clockwise});
}

Path Path::trimmed(double from, double to) const {
    double whole = 0;
    for (const ArcSegment& arc : arcs) {
        whole += length(arc);
    }
    const double begin = pinned(from) * whole;
    const double end = pinned(to) * whole;
    Path result;
    double before = 0;
    for (const ArcSegment& arc : arcs) {
        const double here = length(arc);
        const double first = std::clamp((begin - before) / here, 0.0, 1.0);
        const double last = std::clamp((end - before) / here, 0.0, 1.0);
        if (here > 0 && last > first) {
            ArcSegment part = arc;
            part.startAngle.radians = arc.startAngle.radians + first * arc.sweep();
            part.endAngle.radians = arc.startAngle.radians + last * arc.sweep();
            result.arcs.push_back(part);
        }
        before += here;
    }
    return result;
}

StrokeLayer roundStroke(Path path, double lineWidth, const UIColor& color) {
    StrokeLayer layer;
    layer.path = std::move(path);
    layer.lineWidth = lineWidth;
    layer.lineCap = LineCap::round;
    layer.lineJoin = LineJoin::round;
    layer.color = color;
    return layer;
}

} // namespace vantor::platform
