// SPDX-License-Identifier: MIT
#include "hosts/qt/Buttons.hpp"

#include <QFocusEvent>
#include <QPainter>
#include <QPainterPath>
#include <chrono>

namespace vantor::hosts::qt {

namespace {

constexpr double pillHeight = 26;
constexpr double pillMargin = 12; // left and right of the text
constexpr double glyphSize = 28;
constexpr double glyphLine = 1.6;
constexpr double headingHeight = 22;
constexpr double arrowRoom = 9; // of an arrow and the gap before it

/// A sign about the origin, within seven points to each side.
QPainterPath glyphPath(Glyph glyph) {
    QPainterPath path;
    switch (glyph) {
    case Glyph::refresh:
        path.arcMoveTo(QRectF(-6, -6, 12, 12), 25);
        path.arcTo(QRectF(-6, -6, 12, 12), 25, 310);
        path.moveTo(6, -6.5);
        path.lineTo(6, -2.4);
        path.lineTo(1.9, -2.4);
        break;
    case Glyph::more:
        path.moveTo(-5.5, -2.5);
        path.lineTo(0, 3);
        path.lineTo(5.5, -2.5);
        break;
    case Glyph::less:
        path.moveTo(-5.5, 2.5);
        path.lineTo(0, -3);
        path.lineTo(5.5, 2.5);
        break;
    case Glyph::tick:
        path.moveTo(-5, 0.5);
        path.lineTo(-1.5, 4);
        path.lineTo(5, -3.5);
        break;
    }
    return path;
}

void paintGlyph(QPainter& painter, Glyph glyph, const QPointF& middle, double scale, const QColor& color) {
    painter.save();
    painter.translate(middle);
    painter.scale(scale, scale);
    painter.strokePath(glyphPath(glyph), QPen(color, glyphLine, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.restore();
}

} // namespace

bool isKeyboardFocus(const QFocusEvent& event, bool before) {
    switch (event.reason()) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        return true;
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
        return before;
    default:
        return false;
    }
}

Button::Button(QWidget* parent) : QPushButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void Button::setTheme(const Theme& theme) {
    m_theme = theme;
    setFont(theme.font(textSize()));
    updateGeometry();
    update();
}

void Button::setQuiet(bool quiet) {
    m_quiet = quiet;
    setCursor(quiet ? Qt::ArrowCursor : Qt::PointingHandCursor);
    update();
}

/// Return presses a focused button, as Space does: this is no dialogue with a default button.
bool Button::event(QEvent* event) {
    if (event->type() == QEvent::Polish) {
        setAutoDefault(true);
    }
    return QPushButton::event(event);
}

void Button::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = isKeyboardFocus(*event, m_keyboardFocus);
    QPushButton::focusInEvent(event);
}

bool Button::showsFocus() const {
    return m_keyboardFocus && hasFocus() && window()->isActiveWindow();
}

void Button::paintShape(QPainter& painter, double radius) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_quiet        ? QColor(Qt::transparent)
                     : isDown()     ? m_theme.pressedFill
                     : underMouse() ? m_theme.hoverFill
                                    : m_theme.fill);
    painter.drawRoundedRect(rect(), radius, radius);
    if (showsFocus()) {
        painter.setPen(QPen(m_theme.accent, 2 * m_theme.pointScale));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius - 1, radius - 1);
    }
}

QSize PillButton::sizeHint() const {
    const int text = fontMetrics().horizontalAdvance(this->text());
    return {text + 2 * theme().pixels(pillMargin), theme().pixels(pillHeight)};
}

void PillButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintShape(painter, height() / 2.0);
    painter.setPen(ink());
    painter.drawText(rect(), Qt::AlignCenter, text());
}

void HeadingButton::setCaption(const QString& caption) {
    if (caption != m_caption) {
        m_caption = caption;
        updateGeometry();
        update();
    }
}

QSize HeadingButton::sizeHint() const {
    const int text = fontMetrics().horizontalAdvance(m_caption);
    return {text + theme().pixels(arrowRoom), theme().pixels(headingHeight)};
}

/// No ground, so that the arrow ends where the figures below it end.
void HeadingButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = theme().pointScale;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const bool isLively = !isQuiet() && (underMouse() || isDown());
    const QColor& color = isLively ? theme().text : theme().secondaryText;
    const double room = isQuiet() ? 0 : arrowRoom * scale;
    painter.setPen(color);
    painter.drawText(
        QRectF(rect()).adjusted(mirrored ? room : 0, 0, mirrored ? 0 : -room, 0),
        static_cast<int>(
            (Qt::AlignAbsolute | Qt::AlignVCenter | (mirrored ? Qt::AlignLeft : Qt::AlignRight)).toInt()),
        m_caption);
    if (showsFocus()) {
        painter.fillRect(QRectF(0, height() - 3 * scale, width(), 2 * scale), theme().accent);
    }
    if (isQuiet()) {
        return;
    }
    painter.translate(mirrored ? scale : width() - scale, height() / 2.0 + 0.5 * scale);
    painter.scale(mirrored ? -scale : scale, scale);
    painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF{QPointF(-3.2, -3.2), QPointF(0, 0), QPointF(-3.2, 3.2)});
}

GlyphButton::GlyphButton(QWidget* parent) : Button(parent) {
    m_confirmation.setSingleShot(true);
    m_confirmation.callOnTimeout(this, [this] { update(); });
}

void GlyphButton::confirm() {
    m_confirmation.start(std::chrono::milliseconds(1200));
    update();
}

void GlyphButton::setGlyph(Glyph glyph) {
    m_glyph = glyph;
    update();
}

QSize GlyphButton::sizeHint() const {
    return {theme().pixels(glyphSize), theme().pixels(glyphSize)};
}

void GlyphButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintShape(painter, height() / 2.0);
    paintGlyph(painter, m_confirmation.isActive() ? Glyph::tick : m_glyph, QRectF(rect()).center(),
               theme().pointScale, theme().text);
}

} // namespace vantor::hosts::qt
