// SPDX-License-Identifier: MIT
#include "hosts/qt/AppIcon.hpp"

#include "AppIconText.hpp"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace vantor::hosts::qt {

QIcon appIcon() {
    QSvgRenderer renderer{QByteArray(appIconText)};
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace vantor::hosts::qt
