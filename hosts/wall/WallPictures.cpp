// SPDX-License-Identifier: MIT
/// The pictures that a wall is put together from, each drawn once.
#include "hosts/wall/WallPainter.hpp"
#include "hosts/wall/WallWords.hpp"

#include <QPainter>
#include <algorithm>

namespace vantor::hosts::wall {

using fleet::Band;

namespace {

constexpr int wholeRing = 270 * 16, lowerLeft = 225 * 16; // sixteenths of a degree, counter-clockwise
constexpr int bandPlaces = 16;

bool isLoud(Band band) {
    return band == Band::red || band == Band::orange;
}

/// × ~ or – in the middle of a square.
void drawSign(QPainter& painter, Band band, const QRectF& square) {
    const QPointF middle = square.center();
    const double reach = square.width() * 0.24;
    if (band == Band::down) {
        painter.drawLine(middle + QPointF(-reach, -reach), middle + QPointF(reach, reach));
        painter.drawLine(middle + QPointF(-reach, reach), middle + QPointF(reach, -reach));
    } else if (band == Band::unknown) {
        painter.drawLine(middle + QPointF(-reach, 0), middle + QPointF(reach, 0));
    } else if (band == Band::stale) {
        QPolygonF wave;
        for (const double at : {-1.0, -0.5, 0.0, 0.5, 1.0}) {
            const double up = at == -0.5 ? 0.45 : at == 0.5 ? -0.45 : 0;
            wave << middle + QPointF(at * reach, -up * reach);
        }
        painter.drawPolyline(wave);
    }
}

} // namespace

QPixmap WallPainter::emptyPixmap(const QSize& size) const {
    QPixmap pixmap((QSizeF(size) * m_pixelRatio).toSize());
    pixmap.setDevicePixelRatio(m_pixelRatio);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

const QPixmap& WallPainter::square(Band band, int side) {
    QPixmap& pixmap = m_squares[side * bandPlaces + static_cast<int>(band)];
    if (pixmap.isNull()) {
        pixmap = emptyPixmap({side, side});
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor color = m_look.band(band);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        const QRectF whole(0, 0, side, side);
        const double radius = std::min(side * 0.22, 6.0);
        painter.drawRoundedRect(whole, radius, radius);
        painter.setPen(QPen(WallLook::inkOn(color), std::max(1.0, side * 0.11), Qt::SolidLine, Qt::RoundCap,
                            Qt::RoundJoin));
        drawSign(painter, band, whole);
    }
    return pixmap;
}

const QPixmap& WallPainter::ring(const RingKind& kind) {
    constexpr int percents = 102; // and one more: absent
    const int percent = kind.percent ? std::clamp(*kind.percent, 0, 100) + 1 : 0;
    const int key = ((kind.diameter * bandPlaces + static_cast<int>(kind.band)) * percents + percent) * 2 +
                    (kind.hasSign ? 1 : 0);
    QPixmap& pixmap = m_rings[key];
    if (pixmap.isNull()) {
        pixmap = drawnRing(kind);
    }
    return pixmap;
}

QPixmap WallPainter::drawnRing(const RingKind& kind) const {
    QPixmap pixmap = emptyPixmap({kind.diameter, kind.diameter});
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const Band band = kind.percent ? kind.band : Band::unknown;
    const double scale = kind.diameter / 32.0;
    const double stroke = std::min((isLoud(band) ? 4.5 : 4.0) * scale, 0.12 * kind.diameter + 1);
    const double inset = 4.5 * scale / 2;
    const QRectF line = QRectF(0, 0, kind.diameter, kind.diameter).adjusted(inset, inset, -inset, -inset);
    const QColor track = m_look.isDark() ? QColor(0x48, 0x48, 0x4A) : QColor(0xD9, 0xD9, 0xDE);
    painter.setPen(QPen(track, 1.5 * m_look.theme.pointScale, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(line, lowerLeft, -wholeRing);
    if (kind.percent.value_or(0) > 0) {
        painter.setPen(QPen(m_look.band(band), stroke, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(line, lowerLeft, -std::min(*kind.percent, 100) * wholeRing / 100);
    }
    const double points = std::max(TextSize::caption, kind.diameter / m_look.theme.pointScale * 0.27);
    painter.setFont(m_look.theme.font(points, isLoud(band) ? QFont::DemiBold : QFont::Normal));
    painter.setPen(isLoud(band) ? m_look.theme.text : m_look.theme.secondaryText);
    painter.drawText(QRectF(0, 0, kind.diameter, kind.diameter), int(Qt::AlignCenter) | int(Qt::TextDontClip),
                     kind.percent ? countText(static_cast<std::size_t>(std::max(*kind.percent, 0)))
                                  : QStringLiteral("\u2013"));
    if (kind.hasSign && band != Band::unknown) { // whose dash is in the middle
        painter.setPen(QPen(m_look.theme.text, 1.5 * m_look.theme.pointScale, Qt::SolidLine, Qt::RoundCap));
        const double side = kind.diameter * 0.4;
        drawSign(painter, kind.band,
                 {(kind.diameter - side) / 2, kind.diameter - 0.66 * side, side, side * 0.66});
    }
    return pixmap;
}

} // namespace vantor::hosts::wall
