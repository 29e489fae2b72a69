// SPDX-License-Identifier: MIT
#include "hosts/qt/MessageLine.hpp"

#include <QAccessible>
#include <QPainter>
#include <algorithm>
#include <chrono>

namespace vantor::hosts::qt {

namespace {

constexpr auto shownFor = std::chrono::seconds(5);
constexpr double edge = 10;   // points from the card's edges
constexpr double inset = 12;  // and from the text to the shape's ends
constexpr double radius = 10; // of the shape

} // namespace

MessageLine::MessageLine(QWidget* card) : QLabel(card) {
    hide();
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_end.setSingleShot(true);
    m_end.callOnTimeout(this, [this] { hide(); });
}

void MessageLine::setTheme(const Theme& theme) {
    m_theme = theme;
    setFont(theme.font(TypeSize::small));
    QPalette palette = this->palette();
    palette.setColor(QPalette::WindowText, theme.card);
    setPalette(palette);
    setMargin(theme.pixels(6));
    place();
}

void MessageLine::showText(const QString& text) {
    setText(text);
    place();
    show();
    raise();
    m_end.start(shownFor);
    if (QAccessible::isActive()) {
        QAccessibleEvent shown(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&shown);
    }
}

void MessageLine::place() {
    const QWidget& card = *parentWidget();
    const int widest = card.width() - 2 * m_theme.pixels(edge);
    const int wanted = fontMetrics().horizontalAdvance(text()) + 2 * m_theme.pixels(inset);
    const int width = std::min(widest, wanted);
    setContentsMargins(m_theme.pixels(4), 0, m_theme.pixels(4), 0);
    const int height = heightForWidth(width);
    setGeometry((card.width() - width) / 2, card.height() - height - m_theme.pixels(edge), width, height);
}

void MessageLine::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        m_theme.secondaryText.darker(m_theme.appearance == platform::Appearance::light ? 160 : 100));
    painter.drawRoundedRect(rect(), radius * m_theme.pointScale, radius * m_theme.pointScale);
    painter.end();
    QLabel::paintEvent(event);
}

} // namespace vantor::hosts::qt
