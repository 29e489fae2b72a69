// SPDX-License-Identifier: MIT
#include "hosts/app/Look.hpp"

#include <QWidget>

namespace vantor::hosts::app {

Look Look::of(platform::Appearance appearance, double pointScale, const QColor& accent) {
    const bool light = appearance == platform::Appearance::light;
    const auto color = [light](QRgb onLight, QRgb onDark) {
        return QColor::fromRgb(light ? onLight : onDark);
    };
    Look look;
    look.parts = {color(0x3A6EA8, 0x6FA3DE), color(0x86ABD6, 0x44699A), color(0xC6D8EC, 0x2E435F),
                  color(0xE4E4EA, 0x3A3A3E)};
    look.selection = color(0xE6EEF8, 0x25344A);
    look.destructive = color(0xC4221A, 0xFF8078);
    look.off = color(0x8E8E93, 0x6C6C71);
    look.theme = qt::Theme::ofGround(appearance, pointScale, accent);
    return look;
}

void applyLook(QWidget& top, const Look& look) {
    if (auto* const looked = dynamic_cast<Looked*>(&top)) {
        looked->setLook(look);
    }
    for (QObject* const child : top.children()) {
        if (auto* const widget = qobject_cast<QWidget*>(child)) {
            applyLook(*widget, look);
        }
    }
}

} // namespace vantor::hosts::app
