// SPDX-License-Identifier: MIT
#include "hosts/qt/MenuStyle.hpp"

#include <QPainter>
#include <QPen>
#include <QStyleOption>

namespace vantor::hosts::qt {

namespace {

/// A shade between the ground and its text.
QColor shade(const QPalette& palette, double share) {
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(static_cast<float>(share));
    return color;
}

constexpr double frameShare = 0.2;
constexpr double lineShare = 0.18;
constexpr double disabledShare = 0.5;
constexpr double markShare = 0.65; // above 3:1 on both grounds

void paintMark(const QStyleOption& option, QPainter& painter) {
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QColor ink =
        isSelected ? option.palette.color(QPalette::HighlightedText) : shade(option.palette, markShare);
    const QRectF box = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(ink);
    painter.drawRoundedRect(box, 2, 2);
    if (option.state.testFlag(QStyle::State_On)) {
        const QColor tick = isSelected ? ink : option.palette.color(QPalette::WindowText);
        painter.setPen(QPen(tick, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const auto at = [&box](double x, double y) {
            return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
        };
        painter.drawPolyline(QPolygonF{at(0.22, 0.52), at(0.43, 0.73), at(0.79, 0.29)});
    }
    painter.restore();
}

} // namespace

MenuStyle::MenuStyle() : QProxyStyle(QStringLiteral("fusion")) {}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element == CE_MenuItem && item != nullptr && item->menuItemType == QStyleOptionMenuItem::Separator) {
        const QRect line(item->rect.left() + 8, item->rect.center().y(), item->rect.width() - 16, 1);
        painter->fillRect(line, shade(item->palette, lineShare));
        return;
    }
    if (element == CE_MenuItem && item != nullptr && !item->state.testFlag(QStyle::State_Enabled)) {
        // Fusion etches what cannot be chosen: doubled on a dark ground, as strong as the rest on a light
        // one.
        QStyleOptionMenuItem quiet(*item);
        quiet.state.setFlag(QStyle::State_Enabled).setFlag(QStyle::State_Selected, false);
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
            quiet.palette.setColor(role, shade(item->palette, disabledShare));
        }
        QProxyStyle::drawControl(element, &quiet, painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
    case PE_PanelMenu:
    case PE_FrameMenu:
        painter->save();
        painter->setPen(shade(option->palette, frameShare));
        painter->setBrush(element == PE_PanelMenu ? option->palette.window() : QBrush(Qt::NoBrush));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
        break;
    case PE_IndicatorCheckBox:
    case PE_IndicatorMenuCheckMark:
        paintMark(*option, *painter);
        break;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

} // namespace vantor::hosts::qt
