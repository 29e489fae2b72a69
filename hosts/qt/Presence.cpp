// SPDX-License-Identifier: MIT
#include "hosts/qt/Presence.hpp"

#include <QEvent>
#include <QWindow>
#include <utility>

namespace vantor::hosts::qt {

Presence::Presence(QWidget& window, std::function<void(bool)> changed)
    : m_window(window), m_changed(std::move(changed)) {
    m_window.installEventFilter(this);
}

void Presence::setScreenLocked(bool locked) {
    m_locked = locked;
    update();
}

/// Exposure is known at the window system's handle, which exists from the first show on.
bool Presence::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
        if (m_window.windowHandle() != nullptr) { // another one where the window has changed its kind
            m_window.windowHandle()->installEventFilter(this);
        }
        update();
        break;
    case QEvent::Hide:
    case QEvent::WindowStateChange:
    case QEvent::Expose:
        // What the event says holds only after the window has seen it.
        QMetaObject::invokeMethod(
            this, [this] { update(); }, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

void Presence::update() {
    const QWindow* handle = m_window.windowHandle();
    const bool seen = m_window.isVisible() && !m_window.isMinimized() && handle != nullptr &&
                      handle->isExposed() && !m_locked;
    if (std::exchange(m_seen, seen) != seen) {
        m_changed(seen);
    }
}

} // namespace vantor::hosts::qt
