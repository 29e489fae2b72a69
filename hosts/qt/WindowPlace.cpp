// SPDX-License-Identifier: MIT
#include "hosts/qt/WindowPlace.hpp"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace vantor::hosts::qt {

bool isWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

bool isX11() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

void moveBackTo(QWidget& window, const QPoint& place) {
    const QMargins margins = window.contentsMargins();
    if (QGuiApplication::screenAt(place + QPoint(margins.left(), margins.top())) != nullptr) {
        window.move(place);
        keepOnScreen(window);
    }
}

QPoint placeOnScreen(const QWidget& window, const QPoint& place, int growth) {
    const QMargins margins = window.contentsMargins();
    const QScreen* on = QGuiApplication::screenAt(place + QPoint(margins.left(), margins.top()));
    if (on == nullptr || isWayland()) {
        return place;
    }
    const QRect room = on->availableGeometry().marginsAdded(margins);
    const QSize frame = window.frameGeometry().size() + QSize(0, growth);
    return {std::max(room.left(), std::min(place.x(), room.right() + 1 - frame.width())),
            std::max(room.top(), std::min(place.y(), room.bottom() + 1 - frame.height()))};
}

void keepOnScreen(QWidget& window) {
    const QPoint inside = placeOnScreen(window, window.pos());
    if (inside != window.pos()) {
        window.move(inside);
    }
}

} // namespace vantor::hosts::qt
