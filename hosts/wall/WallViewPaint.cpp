// SPDX-License-Identifier: MIT
#include "hosts/qt/HostText.hpp"
#include "hosts/wall/WallView.hpp"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

namespace vantor::hosts::wall {

void WallView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), m_painter.look().theme.backdrop);
    if (m_table.rows().empty()) {
        paintNothing(painter);
    }
    for (const QRect& part : event->region()) {
        paintPart(painter, part);
    }
}

/// Why there are no machines.
void WallView::paintNothing(QPainter& painter) {
    const WallLook& look = m_painter.look();
    const char* const why = m_table.snapshot() == nullptr ? "wall_ASKING"
                            : m_table.known() > 0         ? "wall_NOMATCH"
                                                          : "wall_EMPTY";
    painter.setFont(look.theme.font(TextSize::body));
    painter.setPen(look.theme.secondaryText);
    painter.drawText(viewport()->rect(), int(Qt::AlignCenter), qt::hostText(why));
}

/// The headings and machines that a rectangle touches.
void WallView::paintPart(QPainter& painter, const QRect& part) {
    for (std::size_t group = 0; group < m_table.groups().size(); ++group) {
        if (const QRect line = headingRect(group); line.intersects(part)) {
            paintHeading(painter, group, line);
        }
    }
    const int scrolled = verticalScrollBar()->value() - top();
    const auto [first, end] =
        m_grid.between(std::max(part.top() + scrolled, 0), std::max(part.bottom() + 1 + scrolled, 0));
    const std::size_t known = std::min(end, m_firstFace + m_faces.size());
    for (std::size_t row = std::max(first, m_firstFace); row < known; ++row) {
        if (const QRect cell = cellOf(row); cell.adjusted(-1, -1, 1, 1).intersects(part)) {
            const bool isCursor = row == m_cursorRow && hasFocus();
            m_painter.paint(painter, cell, m_faces.at(row - m_firstFace), m_density, isCursor);
            ++m_paintedCells;
        }
    }
}

/// An arrow that tells whether it is folded, the group's name, and how its machines are.
void WallView::paintHeading(QPainter& painter, std::size_t group, const QRect& line) {
    const WallLook& look = m_painter.look();
    const fleet::FleetGroup& shown = m_table.groups().at(group);
    const int height = look.pixels(26);
    const QRect text(line.left(), line.bottom() + 1 - height, line.width(), height);
    const bool mirrored = isRightToLeft();
    const double scale = look.theme.pointScale;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(mirrored ? text.right() - 5 * scale : text.left() + 6 * scale, text.center().y() + 0.5);
    painter.scale(mirrored ? -scale : scale, scale);
    painter.rotate(shown.isFolded ? 0 : 90);
    painter.setPen(QPen(look.theme.secondaryText, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF{QPointF(-2.2, -4.4), QPointF(2.2, 0), QPointF(-2.2, 4.4)});
    painter.restore();
    const int start = look.pixels(18);
    painter.setPen(look.theme.text);
    const QString name = shown.name.empty() ? QStringLiteral("\u2013") : QString::fromStdString(shown.name);
    const int wide = m_painter.texts().draw(painter, fromStart(text, start, text.width() / 2), name,
                                            look.theme.font(TextSize::body, QFont::Bold));
    painter.setPen(look.theme.secondaryText);
    const int after = start + wide + look.pixels(12);
    m_painter.texts().draw(painter, fromStart(text, after, text.width() - after), m_headings.at(group),
                           look.theme.font(TextSize::label));
    const std::optional<std::size_t> row = m_cursorRow;
    if (row && shown.isFolded && groupOf(*row) == group && hasFocus()) {
        painter.setPen(QPen(look.theme.text, 1));
        painter.drawRect(text.adjusted(0, 0, -1, -1));
    }
}

} // namespace vantor::hosts::wall
