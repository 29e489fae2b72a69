// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QPixmap>
#include <QString>
#include <QTimer>
#include <functional>
#include <vector>

namespace vantor::hosts::app {

/// The icons of applications. A theme's icon takes milliseconds to find and to draw, so it comes later, one
/// at a time; until then, and where there is none, a tile with the first letter of the name stands for it.
class AppIcons {
public:
    /// `changed` hears that an icon has come. `useTheme` off: tiles alone, the same on every machine.
    AppIcons(std::function<void()> changed, bool useTheme);

    /// `side` in logical pixels. Main thread.
    [[nodiscard]] QPixmap icon(const QString& icon, const QString& name, int side, double pixelRatio);

private:
    struct Wish {
        QString key;
        QString icon;
        QSize pixels;
        double ratio = 1;
    };
    void loadOne();

    std::function<void()> m_changed;
    bool m_useTheme;
    QHash<QString, QPixmap> m_icons;
    std::vector<Wish> m_wishes;
    QTimer m_later;
};

} // namespace vantor::hosts::app
