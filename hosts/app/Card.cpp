// SPDX-License-Identifier: MIT
#include "hosts/app/Card.hpp"

#include <QPainter>

namespace vantor::hosts::app {

void Card::setLook(const Look& look) {
    m_look = look;
    update();
}

void Card::paintEvent(QPaintEvent* /*event*/) {
    constexpr double radius = 16; // points
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(m_look.theme.edge);
    painter.setBrush(m_look.theme.card);
    const double corner = radius * m_look.theme.pointScale;
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
}

Rule::Rule() {
    setFixedHeight(1);
}

void Rule::setLook(const Look& look) {
    m_color = look.theme.separator;
    update();
}

void Rule::paintEvent(QPaintEvent* /*event*/) {
    QPainter(this).fillRect(rect(), m_color);
}

} // namespace vantor::hosts::app
