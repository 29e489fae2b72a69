// SPDX-License-Identifier: MIT
#include "hosts/wall/TextCache.hpp"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QTextOption>

namespace vantor::hosts::wall {

namespace {

constexpr qsizetype mostTexts = 4096; // more than a screen holds

} // namespace

int TextCache::draw(QPainter& painter, const QRect& line, const QString& text, const QFont& font,
                    Qt::Alignment side) {
    if (text.isEmpty() || line.width() <= 0) {
        return 0;
    }
    const Key key{text, font.pixelSize(), font.weight(), line.width()};
    auto found = m_texts.find(key);
    if (found == m_texts.end()) {
        if (m_texts.size() >= mostTexts) {
            m_texts.clear();
        }
        QStaticText laidOut(QFontMetrics(font).elidedText(text, Qt::ElideRight, line.width()));
        laidOut.setTextFormat(Qt::PlainText);
        QTextOption option; // a name in Latin letters does not turn a line of Arabic around
        option.setTextDirection(QGuiApplication::layoutDirection());
        option.setWrapMode(QTextOption::NoWrap);
        laidOut.setTextOption(option);
        laidOut.setPerformanceHint(QStaticText::AggressiveCaching);
        laidOut.prepare({}, font);
        found = m_texts.insert(key, laidOut);
    }
    const QSizeF size = found->size();
    const Qt::Alignment at = QGuiApplication::layoutDirection() == Qt::RightToLeft && side != Qt::AlignHCenter
                                 ? (side == Qt::AlignLeading ? Qt::AlignRight : Qt::AlignLeft)
                                 : side;
    const double free = line.width() - size.width();
    const double x = at == Qt::AlignHCenter ? line.left() + free / 2
                     : at == Qt::AlignRight ? line.left() + free
                                            : line.left();
    painter.setFont(font);
    painter.drawStaticText(QPointF(x, line.top() + (line.height() - size.height()) / 2), *found);
    return qCeil(size.width());
}

} // namespace vantor::hosts::wall
