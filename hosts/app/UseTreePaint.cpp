// SPDX-License-Identifier: MIT
/// How the rows of a list of applications are painted. Lengths are points from the start or the end of a row.
#include "hosts/app/UseTree.hpp"

#include <QPainter>
#include <algorithm>

namespace vantor::hosts::app {

namespace {

constexpr double iconStart = 16, iconSide = 32, nameStart = 64, lineEnd = 16, figureRoom = 108;
constexpr double tileRadius = 12, arrowGap = 6, arrowRoom = 12;

int alignment(bool mirrored, bool atEnd) {
    return int(Qt::AlignAbsolute | (atEnd != mirrored ? Qt::AlignRight : Qt::AlignLeft));
}

} // namespace

void UseTree::drawBranches(QPainter* /*painter*/, const QRect& /*rect*/, const QModelIndex& /*index*/) const {
    // The rows have an arrow of their own.
}

/// A part of a row, `start` from its start and `end` from its end.
QRect UseTree::placed(const QRect& row, int start, int end) const {
    return layoutDirection() == Qt::RightToLeft ? row.adjusted(end, 0, -start, 0)
                                                : row.adjusted(start, 0, -end, 0);
}

bool UseTree::isOnFold(const QModelIndex& index, const QPoint& at) const {
    const UseRow* const row = m_model.rowAt(index);
    if (row == nullptr || index.parent().isValid() || row->detail.isEmpty()) {
        return false;
    }
    QRect whole = visualRect(index.siblingAtColumn(0));
    whole.setLeft(0);
    whole.setRight(viewport()->width() - 1);
    const int text = QFontMetrics(m_look.theme.font(TextSize::caption)).horizontalAdvance(row->detail) +
                     m_look.pixels(arrowGap + arrowRoom);
    const int start = m_look.pixels(nameStart);
    QRect fold = placed(whole, start, std::max(whole.width() - start - text, 0));
    fold.setTop(whole.center().y());
    return fold.contains(at);
}

void UseTree::paintTile(QPainter& painter, const QRect& row, bool isCurrent) const {
    const bool focused = isCurrent && m_keyboardFocus && hasFocus() && window()->isActiveWindow();
    if (!isCurrent) {
        return;
    }
    const double line = 2 * m_look.theme.pointScale, radius = tileRadius * m_look.theme.pointScale;
    painter.setPen(focused ? QPen(m_look.theme.accent, line) : QPen(Qt::NoPen));
    painter.setBrush(m_look.selection);
    const double inset = focused ? line / 2 : 0;
    painter.drawRoundedRect(QRectF(row).adjusted(inset, inset, -inset, -inset), radius, radius);
}

/// The icon, the name, and below it how many processes there are, with an arrow that unfolds them.
void UseTree::paintName(QPainter& painter, const QRect& row, const UseRow& use, bool isOpen) const {
    const int side = m_look.pixels(iconSide);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int iconX =
        mirrored ? row.right() + 1 - m_look.pixels(iconStart) - side : row.left() + m_look.pixels(iconStart);
    painter.drawPixmap(iconX, row.top() + (row.height() - side) / 2,
                       m_icons.icon(use.icon, use.name, side, devicePixelRatioF()));
    const QRect text = placed(row, m_look.pixels(nameStart), columnEnd(1) + m_look.pixels(figureRoom));
    const QFont nameFont = m_look.theme.font(TextSize::body);
    const int middle = text.top() + text.height() * 52 / 100;
    painter.setFont(nameFont);
    painter.setPen(m_look.theme.text);
    painter.drawText(QRect(text.left(), text.top(), text.width(), middle - text.top()),
                     alignment(mirrored, false) | int(Qt::AlignBottom) | int(Qt::TextSingleLine),
                     QFontMetrics(nameFont).elidedText(use.name, Qt::ElideRight, text.width()));
    const QFont detailFont = m_look.theme.font(TextSize::caption);
    painter.setFont(detailFont);
    painter.setPen(m_look.theme.secondaryText);
    const QRect below(text.left(), middle, text.width(), text.bottom() - middle);
    painter.drawText(below, alignment(mirrored, false) | int(Qt::AlignTop), use.detail);
    const double scale = m_look.theme.pointScale;
    const int wide = QFontMetrics(detailFont).horizontalAdvance(use.detail) + m_look.pixels(arrowGap);
    painter.save();
    painter.translate(mirrored ? text.right() - wide - 5 * scale : text.left() + wide + 5 * scale,
                      middle + QFontMetrics(detailFont).height() / 2.0);
    painter.scale(mirrored ? -scale : scale, scale);
    painter.rotate(isOpen ? 90 : 0);
    painter.setPen(QPen(m_look.theme.secondaryText, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF{QPointF(-1.6, -3.4), QPointF(1.8, 0), QPointF(-1.6, 3.4)});
    painter.restore();
}

void UseTree::paintFigures(QPainter& painter, const QRect& row, const QModelIndex& index) const {
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    for (const int column : {1, 2}) {
        const QString text = m_model.data(index.siblingAtColumn(column), Qt::DisplayRole).toString();
        const int end = columnEnd(column);
        painter.drawText(placed(row, row.width() - end - m_look.pixels(figureRoom), end),
                         alignment(mirrored, true) | int(Qt::AlignVCenter) | int(Qt::TextDontClip), text);
    }
}

void UseTree::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const UseRow* const use = m_model.rowAt(index);
    if (use == nullptr) {
        return;
    }
    QRect row = option.rect;
    row.setLeft(0);
    row.setRight(viewport()->width() - 1);
    const bool isProcess = index.parent().isValid();
    const bool isApplication = use->kind == UseRowKind::application && !isProcess;
    const bool isCurrent = index.siblingAtColumn(0) == currentIndex().siblingAtColumn(0);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool isLast = !isProcess && index.row() + 1 == m_model.rowCount();
    if (!isLast && !isProcess && !isExpanded(index)) {
        const QRect line = placed(row, m_look.pixels(nameStart), m_look.pixels(lineEnd));
        painter->fillRect(line.left(), row.bottom(), line.width(), 1, m_look.theme.separator);
    }
    paintTile(*painter, row, isCurrent);
    if (isApplication) {
        paintName(*painter, row, *use, isExpanded(index));
        painter->setFont(m_look.theme.font(TextSize::body));
        painter->setPen(m_look.theme.text);
    } else {
        const QFont font = m_look.theme.font(TextSize::label);
        const QRect text = placed(row, m_look.pixels(nameStart), columnEnd(1) + m_look.pixels(figureRoom));
        const QString name = m_model.data(index, Qt::DisplayRole).toString();
        painter->setFont(font);
        painter->setPen(m_look.theme.secondaryText);
        painter->drawText(text,
                          alignment(layoutDirection() == Qt::RightToLeft, false) | int(Qt::AlignVCenter),
                          QFontMetrics(font).elidedText(name, Qt::ElideRight, text.width()));
    }
    paintFigures(*painter, row, index);
    painter->restore();
}

} // namespace vantor::hosts::app
