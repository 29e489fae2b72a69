// SPDX-License-Identifier: MIT
#include "hosts/app/TrashSign.hpp"

#include <QPainter>
#include <QPainterPath>

namespace vantor::hosts::app {

namespace {

constexpr double side = 26, line = 1.5; // points

/// Around its middle: the lid with its handle, the bin, two ribs.
QPainterPath bin() {
    QPainterPath path;
    path.moveTo(-7.5, -6);
    path.lineTo(7.5, -6);
    path.moveTo(-3, -6);
    path.lineTo(-3, -9);
    path.lineTo(3, -9);
    path.lineTo(3, -6);
    path.moveTo(-6, -6);
    path.lineTo(-5, 9);
    path.lineTo(5, 9);
    path.lineTo(6, -6);
    for (const double rib : {-2.0, 2.0}) {
        path.moveTo(rib, -3);
        path.lineTo(rib, 6);
    }
    return path;
}

} // namespace

void TrashSign::setLook(const Look& look) {
    m_look = look;
    setFixedSize(look.pixels(side), look.pixels(side));
    update();
}

void TrashSign::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    painter.scale(m_look.theme.pointScale, m_look.theme.pointScale);
    painter.strokePath(bin(),
                       QPen(m_look.theme.secondaryText, line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace vantor::hosts::app
