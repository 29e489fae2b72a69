// SPDX-License-Identifier: MIT
#include "hosts/app/Sparkline.hpp"

#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

namespace vantor::hosts::app {

namespace {

// Points.
constexpr double headHeight = 22, legendHeight = 20, headGap = 10, footHeight = 20, scaleWidth = 48,
                 plotHeight = 72, dot = 9, dotGap = 5, figureGap = 5, entryGap = 12;
constexpr std::size_t shownSamples = 31; // samples

/// A share: what it is called, which part of the whole it is, and its colour among the look's.
struct Share {
    const char* key;
    double CpuUsage::*value;
    std::size_t color;
};
constexpr std::array shares{Share{"home_USER", &CpuUsage::user, 0}, Share{"app_NICE", &CpuUsage::nice, 2},
                            Share{"home_SYSTEM", &CpuUsage::system, 1}};

bool isShown(const Share& share, const std::vector<CpuUsage>& minute) {
    return share.value != &CpuUsage::nice ||
           std::ranges::any_of(minute, [](const CpuUsage& usage) { return usage.nice >= 0.5; });
}

} // namespace

Sparkline::Sparkline() {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Sparkline::setMinute(std::vector<CpuUsage> minute) {
    m_minute = std::move(minute);
    QStringList spoken{qt::hostText("app_LASTMINUTE")};
    for (const Share& share : shares) {
        if (!m_minute.empty() && isShown(share, m_minute)) {
            spoken << qt::valueText(qt::hostText(share.key).toStdString(),
                                    shareOf(m_minute.back().*share.value, 0).toStdString());
        }
    }
    setAccessibleName(spoken.join(QStringLiteral("; ")));
    update();
}

void Sparkline::setLook(const Look& look) {
    m_look = look;
    setFont(look.theme.font(TextSize::label));
    setFixedHeight(sizeHint().height());
    updateGeometry();
    update();
}

QSize Sparkline::sizeHint() const {
    return {m_look.pixels(344), m_look.pixels(headHeight + legendHeight + headGap + plotHeight + footHeight)};
}

/// Room for all figures in one line.
QSize Sparkline::minimumSizeHint() const {
    const QFontMetrics metrics(m_look.theme.font(TextSize::caption));
    int wide = -m_look.pixels(entryGap);
    for (const Share& share : shares) {
        wide += m_look.pixels(dot + dotGap + figureGap + entryGap) +
                metrics.horizontalAdvance(qt::hostText(share.key)) +
                metrics.horizontalAdvance(shareOf(100, 0));
    }
    return {wide, sizeHint().height()};
}

QRectF Sparkline::plot() const {
    const double end = m_look.pixels(scaleWidth);
    const double left = layoutDirection() == Qt::RightToLeft ? end : 0;
    return {left, double(m_look.pixels(headHeight + legendHeight + headGap)), width() - end,
            double(m_look.pixels(plotHeight))};
}

void Sparkline::paintHeading(QPainter& painter) const {
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    painter.setFont(m_look.theme.font(TextSize::label, QFont::Bold));
    painter.setPen(m_look.theme.secondaryText);
    painter.drawText(QRect(0, 0, width(), m_look.pixels(headHeight)),
                     int(Qt::AlignAbsolute) | int(mirrored ? Qt::AlignRight : Qt::AlignLeft) |
                         int(Qt::AlignVCenter),
                     qt::hostText("app_LASTMINUTE"));
}

/// A mark, the name and the last figure of each share.
void Sparkline::paintLegend(QPainter& painter) const {
    const int top = m_look.pixels(headHeight), high = m_look.pixels(legendHeight);
    int x = 0; // from the start of the line
    const auto place = [&](int wide) {
        const QRect rect(layoutDirection() == Qt::RightToLeft ? width() - x - wide : x, top, wide, high);
        x += wide;
        return rect;
    };
    painter.setFont(m_look.theme.font(TextSize::caption));
    const auto write = [&](const QString& text, const QColor& color) {
        painter.setPen(color);
        painter.drawText(place(painter.fontMetrics().horizontalAdvance(text)),
                         int(Qt::AlignCenter) | int(Qt::TextDontClip), text);
    };
    for (const Share& share : shares) {
        if (m_minute.empty() || !isShown(share, m_minute)) {
            continue;
        }
        const QRectF mark = place(m_look.pixels(dot));
        const double side = mark.width();
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_look.parts.at(share.color));
        painter.drawRoundedRect(QRectF(mark.x(), top + (high - side) / 2, side, side), side * 0.3,
                                side * 0.3);
        x += m_look.pixels(dotGap);
        write(qt::hostText(share.key), m_look.theme.secondaryText);
        x += m_look.pixels(figureGap);
        write(shareOf(m_minute.back().*share.value, 0), m_look.theme.text);
        x += m_look.pixels(entryGap);
    }
}

void Sparkline::paintScale(QPainter& painter, const QRectF& plot) const {
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const double room = m_look.pixels(scaleWidth);
    const auto side = [](bool left) {
        return int(Qt::AlignAbsolute) | int(left ? Qt::AlignLeft : Qt::AlignRight) | int(Qt::AlignVCenter);
    };
    painter.setFont(m_look.theme.font(TextSize::caption));
    for (const int level : {0, 50, 100}) {
        const double y = plot.bottom() - plot.height() * level / 100;
        painter.fillRect(QRectF(plot.left(), std::round(y), plot.width(), 1), m_look.theme.separator);
        painter.setPen(m_look.theme.secondaryText);
        painter.drawText(QRectF(mirrored ? 0 : plot.right(), y - room / 2, room, room), side(mirrored),
                         shareOf(level, 0));
    }
    const QRectF foot(plot.left(), plot.bottom(), plot.width(), m_look.pixels(footHeight));
    painter.drawText(foot, side(!mirrored), qt::hostText("app_AGO"));
    painter.drawText(foot, side(mirrored), qt::hostText("app_NOW"));
}

void Sparkline::paintShares(QPainter& painter, const QRectF& plot) const {
    if (m_minute.size() < 2) {
        return;
    }
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const double step = plot.width() / static_cast<double>(shownSamples - 1);
    std::vector<double> below(m_minute.size(), 0);
    const auto point = [&](std::size_t i) {
        const double back = static_cast<double>(m_minute.size() - 1 - i) * step;
        return QPointF(mirrored ? plot.left() + back : plot.right() - back,
                       plot.bottom() - plot.height() * std::min(below[i], 100.0) / 100);
    };
    painter.setPen(Qt::NoPen);
    for (const Share& share : shares) {
        QPolygonF area;
        for (std::size_t i = 0; i < m_minute.size(); ++i) {
            area << point(i);
        }
        for (std::size_t i = m_minute.size(); i-- > 0;) {
            below[i] += m_minute[i].*share.value;
            area << point(i);
        }
        painter.setBrush(m_look.parts.at(share.color));
        painter.drawPolygon(area);
    }
}

void Sparkline::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font());
    const QRectF place = plot();
    paintHeading(painter);
    paintLegend(painter);
    paintScale(painter, place);
    paintShares(painter, place);
}

} // namespace vantor::hosts::app
