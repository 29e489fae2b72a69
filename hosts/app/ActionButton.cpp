// SPDX-License-Identifier: MIT
#include "hosts/app/ActionButton.hpp"

#include <QPainter>
#include <algorithm>

namespace vantor::hosts::app {

ActionButton::ActionButton(ButtonSize size, ButtonRole role, QWidget* parent)
    : Button(parent), m_size(size), m_role(role) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

double ActionButton::textSize() const {
    return m_size == ButtonSize::large ? TextSize::body : TextSize::label;
}

void ActionButton::setRole(ButtonRole role) {
    m_role = role;
    update();
}

void ActionButton::setLook(const Look& look) {
    m_look = look;
    setTheme(look.theme);
    setFixedHeight(sizeHint().height());
}

QSize ActionButton::sizeHint() const {
    // Points: the least width, the margin on both sides, the height.
    const auto [least, margin, height] =
        m_size == ButtonSize::large ? std::array{176.0, 28.0, 40.0} : std::array{76.0, 16.0, 32.0};
    const int text = fontMetrics().horizontalAdvance(this->text());
    return {std::max(m_look.pixels(least), text + 2 * m_look.pixels(margin)), m_look.pixels(height)};
}

void ActionButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qt::Theme& theme = m_look.theme;
    const bool isChosen = m_role == ButtonRole::chosen;
    const QColor rest = isChosen ? m_look.selection : m_onSelection ? theme.card : theme.fill;
    const QColor ground = !isEnabled()   ? theme.card
                          : isDown()     ? theme.pressedFill
                          : underMouse() ? theme.hoverFill
                                         : rest;
    const bool framed = isChosen || showsFocus() || !isEnabled();
    const double line = showsFocus() ? 2 * theme.pointScale : isChosen ? 1.5 * theme.pointScale : 1;
    painter.setPen(framed ? QPen(isEnabled() ? theme.accent : theme.edge, line) : QPen(Qt::NoPen));
    painter.setBrush(ground);
    const double inset = framed ? line / 2 : 0, radius = height() / 2.0 - inset;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
    painter.setPen(!isEnabled()                        ? theme.secondaryText
                   : m_role == ButtonRole::destructive ? m_look.destructive
                                                       : theme.text);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace vantor::hosts::app
