// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace vantor::hosts::qt {

/// How a menu is drawn, so that its frame, its lines and its marks can be seen on light and dark alike: the
/// toolkit's own are shades of the ground, which vanish on a dark one.
class MenuStyle final : public QProxyStyle {
public:
    MenuStyle();

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};

} // namespace vantor::hosts::qt
