// SPDX-License-Identifier: MIT
/// How the window goes from one size to another.
#include "hosts/qt/WindowPlace.hpp"
#include "hosts/qt/X11Desktop.hpp"
#include "hosts/widget/WidgetWindow.hpp"

#include <QScreen>
#include <chrono>
#include <cmath>

namespace vantor::hosts::widget {

using platform::NCWidgetDisplayMode;

namespace {

constexpr std::chrono::milliseconds glideTime{200};
constexpr double cardMargin = 12; // points around the card

} // namespace

void WidgetWindow::setUpGlide() {
    m_glide.setDuration(static_cast<int>(glideTime.count()));
    m_glide.setEasingCurve(QEasingCurve::OutCubic);
    m_glide.setStartValue(0.0);
    m_glide.setEndValue(1.0);
    connect(&m_glide, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& share) { showGliding(share.toDouble()); });
    connect(&m_glide, &QVariantAnimation::finished, this, [this] { fit(); });
}

void WidgetWindow::setMode(NCWidgetDisplayMode mode) {
    m_host.setMode(mode, screen()->availableGeometry().height() / card().theme().pointScale);
    m_menu.refresh();
    keep();
}

/// A card that has to move when it grows goes back when it shrinks, unless somebody moved it meanwhile.
void WidgetWindow::toggleMode() {
    const bool grows = m_host.mode() == NCWidgetDisplayMode::compact;
    const QPoint place = isGliding() ? m_way.to : pos();
    m_isChangingMode = true;
    setMode(grows ? NCWidgetDisplayMode::expanded : NCWidgetDisplayMode::compact);
    m_isChangingMode = false;

    Way way{card().height(), card().theme().pixels(m_content.height), pos(), place};
    const auto growth = std::exchange(m_growth, std::nullopt);
    if (grows) {
        way.to = qt::placeOnScreen(*this, place, way.toHeight - way.fromHeight);
        if (way.to != place) {
            m_growth = {place, way.to};
        }
    } else if (growth && growth->second == place) {
        way.to = growth->first;
    }
    glide(way);
}

/// The window has its new size in a moment, or at once where nobody would see it or wants to.
void WidgetWindow::glide(const Way& way) {
    m_glide.stop();
    m_way = way;
    if (way.toHeight > way.fromHeight) {
        card().setContentSize(m_content); // laid out once
    }
    if (m_presence.isSeen() && card().animator().hasMotion()) {
        m_glide.start();
    } else {
        showGliding(1);
        fit();
    }
}

void WidgetWindow::showGliding(double share) {
    const auto between = [share](int from, int to) {
        return from + static_cast<int>(std::lround((to - from) * share));
    };
    card().showUpper(between(m_way.fromHeight, m_way.toHeight));
    frameCard();
    if (m_way.from != m_way.to) {
        move(between(m_way.from.x(), m_way.to.x()), between(m_way.from.y(), m_way.to.y()));
    }
}

/// Ends a glide where it leads.
void WidgetWindow::settle() {
    if (isGliding()) {
        m_glide.stop();
        showGliding(1);
        fit();
    }
}

void WidgetWindow::fit() {
    if (isGliding()) {
        settle();
        return;
    }
    card().setContentSize(m_content);
    frameCard();
}

/// In a frame the card stands on a backdrop. Without one it has a shadow where somebody composes the screen;
/// where nobody does, what is outside of the card would be black.
void WidgetWindow::frameCard() {
    const bool isFramed = !windowFlags().testFlag(Qt::FramelessWindowHint);
    const bool hasShadow = !isFramed && qt::isComposed();
    const int margin = isFramed || hasShadow ? card().theme().pixels(cardMargin) : 0;
    const int shadow = hasShadow ? margin : 0;
    setContentsMargins(shadow, shadow, shadow, shadow);
    card().move(margin, margin);
    setFixedSize(card().size() + QSize(2 * margin, 2 * margin));
    clearMask();
    if (margin == 0) {
        setMask(card().shape());
    }
}

} // namespace vantor::hosts::widget
