// SPDX-License-Identifier: MIT
#include "hosts/app/Controls.hpp"

#include "charts/LevelColor.hpp"
#include "hosts/qt/Buttons.hpp"

#include <QKeyEvent>
#include <QPainter>
#include <array>
#include <utility>

namespace vantor::hosts::app {

namespace {

// Points.
constexpr double switchWidth = 44, switchHeight = 24, knobGap = 3, fieldWidth = 80, fieldHeight = 32,
                 fieldRadius = 8, patch = 32, tickRoom = 26;

/// Return presses as Space does.
bool pressedByReturn(QAbstractButton& button, const QKeyEvent& event) {
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (isReturn) {
        button.click();
    }
    return isReturn;
}

void prepare(QAbstractButton& button, const QString& name) {
    button.setAccessibleName(name);
    button.setFocusPolicy(Qt::StrongFocus);
    button.setCursor(Qt::PointingHandCursor);
    button.setAttribute(Qt::WA_Hover);
}

} // namespace

Switch::Switch(const QString& name) {
    prepare(*this, name);
    setCheckable(true);
}

QSize Switch::sizeHint() const {
    constexpr double frame = 4; // room for the focus, which at the end is outside of the row
    return {m_look.pixels(switchWidth + frame), m_look.pixels(switchHeight + 2 * frame)};
}

void Switch::setLook(const Look& look) {
    m_look = look;
    setFixedSize(sizeHint());
    update();
}

void Switch::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = qt::isKeyboardFocus(*event, m_keyboardFocus);
    QAbstractButton::focusInEvent(event);
}

void Switch::keyPressEvent(QKeyEvent* event) {
    if (!pressedByReturn(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

void Switch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = m_look.theme.pointScale;
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    painter.translate(mirrored ? 0 : width(), height() / 2.0);
    painter.scale(mirrored ? -scale : scale, scale);
    const QRectF ground(-switchWidth, -switchHeight / 2, switchWidth, switchHeight);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? m_look.theme.accent : m_look.off);
    painter.drawRoundedRect(ground, switchHeight / 2, switchHeight / 2);
    const double knob = switchHeight - 2 * knobGap;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRectF(isChecked() ? ground.right() - knobGap - knob : ground.left() + knobGap,
                               ground.top() + knobGap, knob, knob));
    if (m_keyboardFocus && hasFocus() && window()->isActiveWindow()) {
        painter.setPen(QPen(m_look.theme.accent, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(ground.adjusted(-3, -3, -1, 3), switchHeight / 2 + 3, switchHeight / 2 + 3);
    }
}

Tick::Tick(const QString& name) {
    prepare(*this, name);
    setCheckable(true);
}

QSize Tick::sizeHint() const {
    return {m_look.pixels(tickRoom), m_look.pixels(tickRoom)};
}

void Tick::setLook(const Look& look) {
    m_look = look;
    setFixedSize(sizeHint());
    update();
}

void Tick::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = qt::isKeyboardFocus(*event, m_keyboardFocus);
    QAbstractButton::focusInEvent(event);
}

void Tick::paintEvent(QPaintEvent* /*event*/) {
    constexpr double side = 18, radius = 5; // points
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(m_look.theme.pointScale, m_look.theme.pointScale);
    const QRectF box(-side / 2, -side / 2, side, side);
    painter.setPen(isChecked() ? QPen(Qt::NoPen) : QPen(m_look.theme.secondaryText, 1.5));
    painter.setBrush(isChecked() ? m_look.theme.accent : m_look.theme.card);
    painter.drawRoundedRect(isChecked() ? box : box.adjusted(0.75, 0.75, -0.75, -0.75), radius, radius);
    if (isChecked()) {
        const bool isPale = qt::contrast(m_look.theme.accent, Qt::white) < 3;
        painter.setPen(QPen(isPale ? Qt::black : Qt::white, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF{QPointF(-4.5, 0.3), QPointF(-1.3, 3.6), QPointF(4.6, -3.2)});
    }
    if (m_keyboardFocus && hasFocus() && window()->isActiveWindow()) {
        painter.setPen(QPen(m_look.theme.accent, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box.adjusted(-3, -3, 3, 3), radius + 3, radius + 3);
    }
}

Field::Field(const QString& name) {
    setAccessibleName(name);
    setFrame(false);
    setAttribute(Qt::WA_MacShowFocusRect, false);
}

void Field::setRefused(bool refused) {
    if (std::exchange(m_refused, refused) != refused) {
        update();
    }
}

void Field::setLook(const Look& look) {
    m_look = look;
    setFont(look.theme.font(TextSize::body));
    setFixedSize(look.pixels(fieldWidth), look.pixels(fieldHeight));
    const int margin = look.pixels(Grid::unit);
    setTextMargins(margin, 0, margin, 0);
    setAlignment(Qt::AlignAbsolute | Qt::AlignVCenter |
                 (layoutDirection() == Qt::RightToLeft ? Qt::AlignLeft : Qt::AlignRight));
    QPalette palette = look.theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    setPalette(palette);
    update();
}

void Field::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = m_look.theme.pointScale, line = (hasFocus() || m_refused ? 2 : 1) * scale;
    painter.setPen(QPen(m_refused    ? m_look.destructive
                        : hasFocus() ? m_look.theme.accent
                                     : m_look.off,
                        line));
    painter.setBrush(m_look.theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(line / 2, line / 2, -line / 2, -line / 2),
                            fieldRadius * scale, fieldRadius * scale);
    painter.end();
    QLineEdit::paintEvent(event);
}

ColorButton::ColorButton(const QString& name) {
    prepare(*this, name);
    setToolTip(name);
}

void ColorButton::setColor(const std::optional<QColor>& color) {
    if (std::exchange(m_color, color) != color) {
        update();
    }
}

void ColorButton::setLook(const Look& look) {
    m_look = look;
    setFixedSize(look.pixels(patch), look.pixels(patch));
    update();
}

void ColorButton::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = qt::isKeyboardFocus(*event, m_keyboardFocus);
    QAbstractButton::focusInEvent(event);
}

void ColorButton::keyPressEvent(QKeyEvent* event) {
    if (!pressedByReturn(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

/// A colour of one's own fills the patch; the automatic ones are its quarters.
void ColorButton::paintEvent(QPaintEvent* /*event*/) {
    constexpr std::array levels{20, 60, 75, 95}; // percent, one of each band
    constexpr int quarter = 90 * 16;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = m_look.theme.pointScale;
    const bool focused = m_keyboardFocus && hasFocus() && window()->isActiveWindow();
    painter.setPen(
        QPen(focused || underMouse() ? m_look.theme.accent : m_look.theme.edge, (focused ? 2 : 1) * scale));
    painter.setBrush(m_look.theme.card);
    painter.drawEllipse(QRectF(rect()).adjusted(scale, scale, -scale, -scale));
    const double inset = 4 * scale;
    const QRectF place = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    painter.setPen(Qt::NoPen);
    if (m_color) {
        painter.setBrush(*m_color);
        painter.drawEllipse(place);
        return;
    }
    for (std::size_t i = 0; i < levels.size(); ++i) {
        painter.setBrush(qt::painted(levelColor(levels.at(i)), m_look.theme.appearance));
        painter.drawPie(place, quarter - static_cast<int>(i) * quarter, -quarter);
    }
}

} // namespace vantor::hosts::app
