// SPDX-License-Identifier: MIT
#include "hosts/qt/RingView.hpp"

#include "hosts/qt/Buttons.hpp"
#include "hosts/qt/LayerPainter.hpp"

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <cmath>
#include <utility>

namespace vantor::hosts::qt {

using platform::Instant;
using platform::Layers;
using platform::TextLayer;

namespace {

constexpr double smallestMove = 0.5; // device pixels

} // namespace

RingView::RingView(QWidget* parent) : QAbstractButton(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent); // the card below needs no repaint when a ring moves
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
}

void RingView::setHostedView(std::shared_ptr<platform::UIHostingView> view, const platform::CGRect& frame) {
    m_view = std::move(view);
    m_frame = frame;
    showAtRest();
    update();
}

void RingView::setTheme(const Theme& theme) {
    m_theme = theme;
    update();
}

Layers RingView::layersAt(Instant now) const {
    return m_view ? m_view->layers(m_frame, now) : Layers{};
}

void RingView::showAt(Instant now) {
    replace(layersAt(now));
}

void RingView::showAtRest() {
    replace(restingLayers());
}

void RingView::replace(Layers layers) {
    const QRectF area = changedArea(m_layers, layers);
    const QString before = percentage();
    m_layers = std::move(layers);
    if (!area.isEmpty()) {
        const double scale = m_theme.pointScale;
        update(QRectF(area.topLeft() * scale, area.size() * scale).toAlignedRect());
    }
    if (before != percentage()) {
        announceValue();
    }
}

/// Quietly: a listening screen reader knows the new value, and nothing is read out.
void RingView::announceValue() {
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(this, percentage());
        QAccessible::updateAccessibility(&changed);
        QAccessibleEvent renamed(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&renamed);
    }
}

double RingView::speedAt(Instant now) const {
    if (!m_view) {
        return 0;
    }
    const platform::LinearAnimation animation = m_view->animation();
    if (!animation.isRunningAt(now) || !(animation.duration > 0)) {
        return 0;
    }
    const double way = std::abs(animation.to - animation.from) * longestStroke(m_layers) *
                       m_theme.pointScale * devicePixelRatioF();
    return way < smallestMove ? 0 : way / animation.duration;
}

QString RingView::textLayer(std::size_t index) const {
    for (const platform::Layer& layer : m_layers) {
        if (const auto* text = std::get_if<TextLayer>(&layer)) {
            if (index == 0) {
                return QString::fromStdString(text->text);
            }
            --index;
        }
    }
    return {};
}

QString RingView::percentage() const {
    return textLayer(0);
}

QString RingView::caption() const {
    return textLayer(1);
}

QSize RingView::sizeHint() const {
    return {m_theme.pixels(104), m_theme.pixels(98)};
}

bool RingView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::FocusOut:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        update();
        break;
    default:
        break;
    }
    return QAbstractButton::event(event);
}

void RingView::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = isKeyboardFocus(*event, m_keyboardFocus);
    update();
}

/// Return presses as Space does.
void RingView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

/// The card's colour; a soft tile when the pointer is over the ring or holds it, and a frame on the focus.
void RingView::paintGround(QPainter& painter) const {
    painter.fillRect(rect(), m_theme.card);
    const bool focused = m_keyboardFocus && hasFocus() && window()->isActiveWindow();
    if (!isDown() && !underMouse() && !focused) {
        return;
    }
    const double line = 2 * m_theme.pointScale;
    const double radius = 12 * m_theme.pointScale;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(focused ? QPen(m_theme.accent, line) : QPen(Qt::NoPen));
    painter.setBrush(isDown() ? m_theme.hoverFill : underMouse() ? m_theme.fill : m_theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
}

void RingView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setClipRect(event->rect());
    paintGround(painter);
    const double scale = m_theme.pointScale;
    painter.scale(scale, scale);
    const QRectF dirty = event->rect();
    paintLayers(painter, m_layers, m_theme, QRectF(dirty.topLeft() / scale, dirty.size() / scale));
}

} // namespace vantor::hosts::qt
