// SPDX-License-Identifier: MIT
#include "hosts/wall/WallPainter.hpp"

#include "hosts/wall/WallWords.hpp"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>

namespace vantor::hosts::wall {

using fleet::Band;
using platform::FleetFigure;

namespace {

constexpr int cardRing = 64, tileRing = 32; // points across
constexpr double tileRadius = 10, signSize = 18;

} // namespace

QRect fromStart(const QRect& whole, int start, int width) {
    const bool mirrored = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    const int left = mirrored ? whole.right() + 1 - start - width : whole.left() + start;
    return {left, whole.top(), width, whole.height()};
}

void WallPainter::setLook(const WallLook& look, double pixelRatio) {
    m_look = look;
    m_pixelRatio = pixelRatio;
    m_texts.clear();
    m_squares.clear();
    m_rings.clear();
    m_tile = QPixmap();
}

void WallPainter::paint(QPainter& painter, const QRect& cell, const Face& face, Density density,
                        bool isCursor) {
    double radius = tileRadius;
    switch (density) {
    case Density::cards:
        painter.drawPixmap(cell.topLeft(), tile(cell.size()));
        paintCard(painter, cell, face);
        break;
    case Density::rings:
        painter.drawPixmap(cell.topLeft(), tile(cell.size()));
        paintRings(painter, cell, face);
        break;
    case Density::ring:
        radius = 8;
        if (face.band == Band::down) {
            const int side = m_look.pixels(24);
            painter.drawPixmap(cell.center() - QPoint(side / 2, side / 2), square(Band::down, side));
        } else {
            painter.drawPixmap(cell.topLeft() + QPoint(m_look.pixels(1), m_look.pixels(1)),
                               ring({m_look.pixels(34), face.percent, face.band, true}));
        }
        break;
    case Density::squares:
    case Density::smallSquares:
        radius = 3;
        painter.drawPixmap(cell.topLeft(), square(face.band, cell.width()));
        break;
    }
    if (isCursor) {
        paintCursor(painter, cell, radius);
    }
}

/// A line in the text's colour around the cell.
void WallPainter::paintCursor(QPainter& painter, const QRect& cell, double radius) {
    const double line = 2 * m_look.theme.pointScale;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(m_look.theme.text, line));
    painter.drawRoundedRect(QRectF(cell), radius * m_look.theme.pointScale, radius * m_look.theme.pointScale);
    painter.restore();
}

const QPixmap& WallPainter::tile(const QSize& size) {
    if (m_tile.isNull() || m_tile.deviceIndependentSize().toSize() != size) {
        m_tile = emptyPixmap(size);
        QPainter painter(&m_tile);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(m_look.theme.edge, 1));
        painter.setBrush(m_look.theme.card);
        const double radius = tileRadius * m_look.theme.pointScale;
        painter.drawRoundedRect(QRectF({}, size).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
    return m_tile;
}

/// The sign, the name, and at the line's end, where there is room, what is to be said of it.
void WallPainter::paintName(QPainter& painter, const QRect& line, const Face& face, const QFont& font) {
    int taken = 0;
    const bool isDown = face.band == Band::down;
    if (!face.isCurrent()) {
        painter.setPen(isDown ? m_look.destructive : m_look.theme.text);
        const QFont bold = m_look.theme.font(isDown ? signSize : TextSize::label, QFont::Bold);
        taken = m_texts.draw(painter, line, QString::fromUtf8(fleet::bandSign(face.band)), bold) +
                m_look.pixels(5);
    }
    const QRect rest = fromStart(line, taken, line.width() - taken);
    painter.setPen(face.isCurrent() || isDown ? m_look.theme.text : m_look.theme.secondaryText);
    const int name = m_texts.draw(painter, rest, face.name, font);
    const QFont small = m_look.theme.font(TextSize::caption);
    const int free = rest.width() - name - m_look.pixels(6);
    if (!isDown && !face.note.isEmpty() && QFontMetrics(small).horizontalAdvance(face.note) < free) {
        painter.setPen(m_look.theme.secondaryText);
        m_texts.draw(painter, rest, face.note, small, Qt::AlignTrailing);
    }
}

void WallPainter::paintRings(QPainter& painter, const QRect& cell, const Face& face) {
    const int margin = m_look.pixels(10);
    const QRect inner = cell.adjusted(margin, m_look.pixels(5), -margin, -m_look.pixels(6));
    const QRect line(inner.left(), inner.top(), inner.width(), m_look.pixels(20));
    const bool isDown = face.band == Band::down;
    paintName(painter, line, face,
              m_look.theme.font(TextSize::label, isDown ? QFont::DemiBold : QFont::Normal));
    if (isDown) {
        painter.setPen(m_look.theme.secondaryText);
        painter.setFont(m_look.theme.font(TextSize::caption));
        painter.drawText(QRect(inner.left(), line.bottom() + m_look.pixels(3), inner.width(),
                               inner.bottom() - line.bottom() - m_look.pixels(2)),
                         int(Qt::AlignLeading | Qt::AlignVCenter) | int(Qt::TextWordWrap), face.note);
        return;
    }
    const int side = m_look.pixels(tileRing);
    const int free = (inner.width() - 3 * side) / 2;
    for (std::size_t i = 0; i < face.percents.size(); ++i) {
        const QRect place = fromStart(inner, static_cast<int>(i) * (side + free), side);
        painter.drawPixmap(place.left(), inner.bottom() + 1 - side + m_look.pixels(2),
                           ring({side, face.percents.at(i), face.bands.at(i), false}));
    }
}

/// Name and rates at the start, the rings with their captions at the end.
void WallPainter::paintCard(QPainter& painter, const QRect& cell, const Face& face) {
    const int margin = m_look.pixels(14), side = m_look.pixels(cardRing), gap = m_look.pixels(10);
    const QRect inner = cell.adjusted(margin, m_look.pixels(8), -margin, -m_look.pixels(8));
    const int rings = 3 * side + 2 * gap;
    const QRect words = fromStart(inner, 0, inner.width() - rings - m_look.pixels(8));
    const int height = m_look.pixels(20);
    const bool isDown = face.band == Band::down;
    Face titled = face;
    titled.note.clear();
    paintName(painter, {words.left(), words.top(), words.width(), height}, titled,
              m_look.theme.font(TextSize::body, QFont::DemiBold));
    const QFont small = m_look.theme.font(TextSize::caption);
    painter.setPen(m_look.theme.secondaryText);
    m_texts.draw(painter, {words.left(), words.top() + height + m_look.pixels(2), words.width(), height},
                 face.note, small);
    const std::array arrows{QStringLiteral("\u2193 "), QStringLiteral("\u2191 ")};
    for (std::size_t i = 0; i < face.rates.size() && !isDown; ++i) {
        painter.setPen(face.isCurrent() ? m_look.theme.text : m_look.theme.secondaryText);
        const int top = inner.bottom() + 1 - static_cast<int>(face.rates.size() - i) * height;
        m_texts.draw(painter, {words.left(), top, words.width(), height}, arrows.at(i) + face.rates.at(i),
                     m_look.theme.font(TextSize::label));
    }
    const std::array captions{figureName(FleetFigure::memory),
                              face.volume.isEmpty() ? figureName(FleetFigure::storage) : face.volume,
                              figureName(FleetFigure::processor)};
    for (std::size_t i = 0; i < face.percents.size(); ++i) {
        const QRect place =
            fromStart(inner, inner.width() - rings + static_cast<int>(i) * (side + gap), side);
        painter.drawPixmap(place.left(), inner.top(),
                           ring({side, face.percents.at(i), face.bands.at(i), false}));
        painter.setPen(m_look.theme.secondaryText);
        m_texts.draw(
            painter,
            {place.left() - gap / 2, inner.bottom() + 1 - m_look.pixels(17), side + gap, m_look.pixels(17)},
            captions.at(i), small, Qt::AlignHCenter);
    }
}

} // namespace vantor::hosts::wall
