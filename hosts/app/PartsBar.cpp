// SPDX-License-Identifier: MIT
#include "hosts/app/PartsBar.hpp"

#include "hosts/qt/HostText.hpp"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace vantor::hosts::app {

namespace {

// Points.
constexpr double barHeight = 16, barGap = 2, dot = 10, dotGap = 6, figureGap = 8, entryGap = 32, below = 10,
                 lineHeight = 22;
constexpr double leastPart = 3; // so that what is there can be seen

QColor between(const QColor& a, const QColor& b) {
    return QColor((a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2);
}

} // namespace

PartsBar::PartsBar(QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void PartsBar::setParts(std::vector<BarPart> parts) {
    if (parts == m_parts) {
        return;
    }
    const QSize before = sizeHint();
    m_parts = std::move(parts);
    QStringList spoken;
    for (const BarPart& part : m_parts) {
        spoken << qt::valueText(part.name.toStdString(), part.figure.toStdString());
    }
    setAccessibleName(spoken.join(QStringLiteral("; ")));
    if (sizeHint() != before) { // else the whole page would be laid out again
        updateGeometry();
    }
    update();
}

void PartsBar::setLook(const Look& look) {
    m_look = look;
    setFont(look.theme.font(TextSize::label));
    updateGeometry();
    update();
}

QColor PartsBar::colorOf(const BarPart& part) const {
    const QColor& own = m_look.parts.at(part.color);
    return part.isHatched ? between(own, m_look.parts.at(part.color + 1)) : own;
}

int PartsBar::widthOf(const BarPart& part) const {
    return m_look.pixels(dot + dotGap + figureGap) + fontMetrics().horizontalAdvance(part.name) +
           fontMetrics().horizontalAdvance(part.figure);
}

std::vector<PartsBar::Entry> PartsBar::entriesIn(int width) const {
    std::vector<Entry> entries;
    int x = 0;
    int line = 0;
    for (const BarPart& part : m_parts) {
        const int wide = widthOf(part);
        if (x > 0 && x + wide > width) {
            x = 0;
            ++line;
        }
        entries.push_back({x, line, fontMetrics().horizontalAdvance(part.name)});
        x += wide + m_look.pixels(entryGap);
    }
    return entries;
}

int PartsBar::heightForWidth(int width) const {
    const std::vector<Entry> entries = entriesIn(width);
    const int lines = entries.empty() ? 1 : entries.back().line + 1;
    return m_look.pixels(barHeight + below + lines * lineHeight);
}

QSize PartsBar::minimumSizeHint() const {
    int widest = 0;
    for (const BarPart& part : m_parts) {
        widest = std::max(widest, widthOf(part));
    }
    return {widest, heightForWidth(width())};
}

QSize PartsBar::sizeHint() const {
    return minimumSizeHint();
}

void PartsBar::paintBar(QPainter& painter) const {
    const double height = m_look.pixels(barHeight), gap = m_look.pixels(barGap);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(0, 0, width(), height), height / 2, height / 2);
    painter.setClipPath(shape);
    painter.fillRect(QRectF(0, 0, width(), height), m_look.parts.back());
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    double whole = 0;
    for (const BarPart& part : m_parts) {
        const double from = whole * width();
        whole += part.fraction;
        const double to =
            std::max(whole * width(), part.fraction > 0 ? from + m_look.pixels(leastPart) : from);
        const double left = mirrored ? width() - to : from;
        painter.fillRect(QRectF(left, 0, to - from, height), colorOf(part));
        const double edge = mirrored ? width() - to : to - gap;
        if (&part != &m_parts.back() && to < width()) {
            painter.fillRect(QRectF(edge, 0, gap, height), m_look.theme.card);
        }
    }
    painter.setClipping(false);
}

void PartsBar::paintEntry(QPainter& painter, const BarPart& part, const Entry& entry) const {
    const int top = m_look.pixels(barHeight + below + entry.line * lineHeight);
    const int high = m_look.pixels(lineHeight);
    const auto place = [&](int x, int wide) {
        return QRect(layoutDirection() == Qt::RightToLeft ? width() - x - wide : x, top, wide, high);
    };
    const double side = m_look.pixels(dot);
    QRectF mark = place(entry.x, m_look.pixels(dot));
    mark = QRectF(mark.x(), top + (high - side) / 2, side, side);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorOf(part));
    painter.drawRoundedRect(mark, side * 0.3, side * 0.3);
    const int name = entry.x + m_look.pixels(dot + dotGap);
    painter.setPen(m_look.theme.secondaryText);
    painter.drawText(place(name, entry.nameWidth), Qt::AlignCenter | Qt::TextDontClip, part.name);
    const int figure = name + entry.nameWidth + m_look.pixels(figureGap);
    painter.setPen(m_look.theme.text);
    painter.drawText(place(figure, fontMetrics().horizontalAdvance(part.figure)),
                     Qt::AlignCenter | Qt::TextDontClip, part.figure);
}

void PartsBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font());
    paintBar(painter);
    const std::vector<Entry> entries = entriesIn(width());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        paintEntry(painter, m_parts[i], entries[i]);
    }
}

} // namespace vantor::hosts::app
