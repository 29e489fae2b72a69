// SPDX-License-Identifier: MIT
#include "hosts/app/Sparkline.hpp"
#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace vantor::hosts::app {

namespace {

// Points.
constexpr double headHeight = 22, headGap = 10, columnsHeight = 92, footHeight = 20, barsWidth = 188,
                 leastWidth = 120;
constexpr double widestColumn = 16, narrowestColumn = 4; // with the gap beside it
constexpr std::size_t mostNumbers = 10;

QColor mixed(const QColor& from, const QColor& to, double share) {
    const auto part = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

} // namespace

ProcessorBars::ProcessorBars() {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ProcessorBars::setProcessors(std::vector<double> busy) {
    if (busy == m_busy) {
        return;
    }
    m_busy = std::move(busy);
    setAccessibleName(qt::hostText(m_busy.size() == 1 ? "app_ONEPROCESSOR" : "app_PROCESSORS", "n",
                                   numberText(static_cast<double>(m_busy.size()), 0).toStdString()));
    update();
}

void ProcessorBars::setLook(const Look& look) {
    m_look = look;
    setFixedHeight(sizeHint().height());
    updateGeometry();
    update();
}

QSize ProcessorBars::minimumSizeHint() const {
    return {m_look.pixels(leastWidth), sizeHint().height()};
}

QSize ProcessorBars::sizeHint() const {
    return {m_look.pixels(barsWidth), m_look.pixels(headHeight + headGap + columnsHeight + footHeight)};
}

void ProcessorBars::paintColumns(QPainter& painter, const QRectF& place) const {
    const double pitch = place.width() / static_cast<double>(m_busy.size());
    const double wide = std::min(pitch * 0.7, m_look.pixels(widestColumn) * 1.0);
    const double radius = std::min(wide / 4, 4 * m_look.theme.pointScale);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const bool hasNumbers = m_busy.size() <= mostNumbers;
    painter.setFont(m_look.theme.font(TextSize::caption));
    for (std::size_t i = 0; i < m_busy.size(); ++i) {
        const double at = static_cast<double>(mirrored ? m_busy.size() - 1 - i : i) * pitch;
        const QRectF column(place.left() + at + (pitch - wide) / 2, place.top(), wide, place.height());
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_look.parts[3]);
        painter.drawRoundedRect(column, radius, radius);
        const double high = column.height() * std::clamp(m_busy[i], 0.0, 100.0) / 100;
        painter.save();
        painter.setClipRect(QRectF(column.left(), column.bottom() - high, wide, high));
        painter.setBrush(m_look.parts[0]);
        painter.drawRoundedRect(column, radius, radius);
        painter.restore();
        if (hasNumbers) {
            painter.setPen(m_look.theme.secondaryText);
            painter.drawText(QRectF(place.left() + at, place.bottom(), pitch, m_look.pixels(footHeight)),
                             int(Qt::AlignCenter), numberText(static_cast<double>(i), 0));
        }
    }
}

/// As large as they can be so that all have room.
void ProcessorBars::paintSquares(QPainter& painter, const QRectF& place) const {
    const auto count = static_cast<double>(m_busy.size());
    double pitch = std::sqrt(place.width() * place.height() / count);
    while (std::floor(place.width() / pitch) * std::floor(place.height() / pitch) < count) {
        pitch *= 0.98;
    }
    const auto perLine = static_cast<std::size_t>(place.width() / pitch);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    for (std::size_t i = 0; i < m_busy.size(); ++i) {
        const double x = static_cast<double>(i % perLine) * pitch;
        const double y = static_cast<double>(i - i % perLine) / static_cast<double>(perLine) * pitch;
        const double gap = pitch * 0.15;
        const QRectF square(mirrored ? place.right() - x - pitch : place.left() + x, place.top() + y,
                            pitch - gap, pitch - gap);
        painter.fillRect(square,
                         mixed(m_look.parts[3], m_look.parts[0], std::clamp(m_busy[i], 0.0, 100.0) / 100));
    }
}

void ProcessorBars::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    painter.setFont(m_look.theme.font(TextSize::label, QFont::Bold));
    painter.setPen(m_look.theme.secondaryText);
    painter.drawText(QRect(0, 0, width(), m_look.pixels(headHeight)),
                     int(Qt::AlignAbsolute) | int(Qt::AlignVCenter) |
                         int(mirrored ? Qt::AlignRight : Qt::AlignLeft),
                     accessibleName());
    const QRectF place(0, m_look.pixels(headHeight + headGap), width(), m_look.pixels(columnsHeight));
    if (m_busy.empty()) {
        return;
    }
    if (place.width() / static_cast<double>(m_busy.size()) >= m_look.pixels(narrowestColumn)) {
        paintColumns(painter, place);
    } else {
        paintSquares(painter, place.adjusted(0, 0, 0, m_look.pixels(footHeight)));
    }
}

} // namespace vantor::hosts::app
