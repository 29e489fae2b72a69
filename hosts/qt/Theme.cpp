// SPDX-License-Identifier: MIT
#include "hosts/qt/Theme.hpp"

#include <QApplication>
#include <QFontInfo>
#include <algorithm>
#include <cmath>
#include <utility>

namespace vantor::hosts::qt {

using platform::Appearance;

namespace {

constexpr double usualFontSize = 14.7; // pixels: eleven points at 96 dots an inch, what desktops come with
constexpr double greatestTextScale = 3;

double luminance(const QColor& color) {
    const auto linear = [](double component) {
        return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// An accent moved towards the text's colour until it stands out on the card as a mark.
QColor visibleOn(const QColor& accent, const QColor& card, const QColor& text) {
    QColor mark = accent;
    for (float share = 0; contrast(mark, card) < 3.0; share += 0.1F) {
        const auto mixed = [share](float from, float to) {
            return from + (to - from) * std::min(share, 1.0F);
        };
        mark = QColor::fromRgbF(mixed(accent.redF(), text.redF()), mixed(accent.greenF(), text.greenF()),
                                mixed(accent.blueF(), text.blueF()));
    }
    return mark;
}

/// Black or white, whichever is easier to read.
QColor textOn(const QColor& ground) {
    return contrast(Qt::white, ground) >= contrast(Qt::black, ground) ? Qt::white : Qt::black;
}

} // namespace

Appearance toolkitAppearance() {
    const bool dark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    return dark ? Appearance::dark : Appearance::light;
}

double desktopTextScale() {
    const double size = QFontInfo(QApplication::font()).pixelSize();
    return std::clamp(size / usualFontSize, 1.0, greatestTextScale);
}

double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor painted(const platform::UIColor& color, Appearance appearance, double opacity) {
    const platform::RGBA rgba = color.resolved(appearance);
    const auto component = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(rgba.red), component(rgba.green), component(rgba.blue),
                            component(rgba.alpha * opacity));
}

Theme Theme::of(Appearance appearance, double pointScale, const QColor& accent) {
    Theme theme;
    theme.appearance = appearance;
    theme.pointScale = pointScale;
    const bool light = appearance == Appearance::light;
    theme.backdrop = light ? QColor(0xE9, 0xE9, 0xEE) : QColor(0x0B, 0x0B, 0x0C);
    theme.card = light ? QColor(0xFF, 0xFF, 0xFF) : QColor(0x1C, 0x1C, 0x1E);
    theme.edge = light ? QColor(0xD4, 0xD4, 0xDA) : QColor(0x3A, 0x3A, 0x3E);
    theme.text = painted(platform::UIColor::labelColor(), appearance);
    theme.secondaryText = light ? QColor(0x63, 0x63, 0x68) : QColor(0xAE, 0xAE, 0xB2);
    theme.fill = light ? QColor(0xF2, 0xF2, 0xF6) : QColor(0x2C, 0x2C, 0x2E);
    theme.hoverFill = light ? QColor(0xE7, 0xE7, 0xEC) : QColor(0x38, 0x38, 0x3B);
    theme.pressedFill = light ? QColor(0xD8, 0xD8, 0xDF) : QColor(0x48, 0x48, 0x4C);
    theme.separator = light ? QColor(0xE5, 0xE5, 0xEA) : QColor(0x32, 0x32, 0x35);
    const QColor blue = light ? QColor(0x00, 0x7A, 0xFF) : QColor(0x0A, 0x84, 0xFF);
    theme.accent = visibleOn(accent.isValid() ? accent : blue, theme.card, theme.text);
    return theme;
}

Theme Theme::ofGround(Appearance appearance, double pointScale, const QColor& accent) {
    const auto color = [appearance](QRgb onLight, QRgb onDark) {
        return QColor::fromRgb(appearance == Appearance::light ? onLight : onDark);
    };
    Theme theme = of(appearance, pointScale, accent.isValid() ? accent : color(0x3A6EA8, 0x6FA3DE));
    theme.backdrop = color(0xF2F2F7, 0x121214);
    theme.edge = color(0xDCDCE1, 0x2C2C30);
    theme.separator = color(0xE1E1E6, 0x323236);
    theme.secondaryText = color(0x636366, 0xAEAEB2);
    theme.fill = color(0xF0F0F5, 0x2C2C2E);
    return theme;
}

QPalette Theme::palette() const {
    QPalette palette;
    for (const auto& [role, color] :
         {std::pair(QPalette::Window, card), std::pair(QPalette::WindowText, text),
          std::pair(QPalette::Base, card), std::pair(QPalette::Text, text), std::pair(QPalette::Button, fill),
          std::pair(QPalette::ButtonText, text), std::pair(QPalette::ToolTipBase, card),
          std::pair(QPalette::ToolTipText, text), std::pair(QPalette::Highlight, accent),
          std::pair(QPalette::HighlightedText, textOn(accent))}) {
        palette.setColor(role, color);
    }
    return palette;
}

QPalette Theme::menuPalette() const {
    QPalette menu = palette();
    const QColor ground = appearance == Appearance::light ? card : fill;
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base}) {
        menu.setColor(role, ground);
    }
    return menu;
}

QFont Theme::font(double points, QFont::Weight weight) const {
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(1, pixels(points)));
    font.setWeight(weight);
    return font;
}

int Theme::pixels(double points) const {
    return static_cast<int>(std::lround(points * pointScale));
}

} // namespace vantor::hosts::qt
