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

void moveBackTo(QWidget& window, const QPoint& place) {
    if (QGuiApplication::screenAt(place) != nullptr) {
        window.move(place);
        keepOnScreen(window);
    }
}

void keepOnScreen(QWidget& window) {
    const QScreen* on = QGuiApplication::screenAt(window.pos());
    if (on == nullptr || isWayland()) {
        return;
    }
    const QRect room = on->availableGeometry();
    const QSize size = window.frameGeometry().size();
    const QPoint inside(std::max(room.left(), std::min(window.x(), room.right() + 1 - size.width())),
                        std::max(room.top(), std::min(window.y(), room.bottom() + 1 - size.height())));
    if (inside != window.pos()) {
        window.move(inside);
    }
}

} // namespace vantor::hosts::qt
