// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>

namespace vantor::hosts::qt {

/// A round-capped arc, drawn pixel by pixel over a picture of what lies beneath: a frame of a moving end
/// touches a few hundred pixels, and nothing of the toolkit's painter. Lengths are device pixels, angles
/// radians that grow clockwise on screen; an arc is shorter than a whole turn.
struct RoundArc {
    QPointF center;
    double radius = 0;
    double halfWidth = 0;
    double start = 0;
    QColor color;

    /// Draws `area` of the arc up to `end` over `still`, an image of what lies beneath whose upper left pixel
    /// is the target's pixel `stillAt`. Both have four bytes a pixel and are opaque there.
    void draw(QImage& target, const QRect& area, const QImage& still, const QPoint& stillAt,
              double end) const;

private:
    [[nodiscard]] QPointF pointAt(double angle) const;
    struct Ends {
        QPointF start;
        QPointF end;
        bool isLong;    // more than half a turn
        double nearest; // the squares of the distances from the centre that the stroke lies between
        double farthest;
    };
    [[nodiscard]] double coverage(const QPointF& pixel, const Ends& ends) const;
};

} // namespace vantor::hosts::qt
