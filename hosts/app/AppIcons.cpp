// SPDX-License-Identifier: MIT
#include "hosts/app/AppIcons.hpp"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace vantor::hosts::app {

namespace {

constexpr std::chrono::milliseconds afterFirstPicture{150}, betweenIcons{5};

/// Dark enough for a white letter.
constexpr std::array<QRgb, 8> grounds{0xB5532A, 0x3D6B8E, 0x3F62A8, 0x417D5B,
                                      0x7D6A50, 0x7A4E9E, 0xA3435F, 0x4B5B6B};

QPixmap letterTile(const QString& name, int side, double ratio) {
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    uint sum = 0;
    for (const QChar character : name) { // not qHash, which differs from run to run
        sum = sum * 31 + character.unicode();
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(grounds[sum % grounds.size()]));
    painter.drawRoundedRect(QRectF(0, 0, side, side), side * 0.25, side * 0.25);
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(1, side / 2));
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, 0, side, side), Qt::AlignCenter, name.trimmed().left(1).toUpper());
    return pixmap;
}

} // namespace

AppIcons::AppIcons(std::function<void()> changed, bool useTheme)
    : m_changed(std::move(changed)), m_useTheme(useTheme) {
    m_later.setSingleShot(true);
    m_later.callOnTimeout([this] { loadOne(); });
}

QPixmap AppIcons::icon(const QString& icon, const QString& name, int side, double pixelRatio) {
    const QString key = QStringLiteral("%1/%2/%3/%4").arg(icon, name).arg(side).arg(pixelRatio);
    const auto known = m_icons.constFind(key);
    if (known != m_icons.constEnd()) {
        return *known;
    }
    QPixmap tile = letterTile(name, side, pixelRatio);
    m_icons.insert(key, tile);
    if (m_useTheme && !icon.isEmpty()) {
        m_wishes.push_back({key, icon, QSize(side, side), pixelRatio});
        if (!m_later.isActive()) {
            m_later.start(afterFirstPicture);
        }
    }
    return tile;
}

void AppIcons::loadOne() {
    if (m_wishes.empty()) {
        return;
    }
    const Wish wish = std::move(m_wishes.back());
    m_wishes.pop_back();
    const QIcon icon =
        wish.icon.startsWith(QLatin1Char('/')) ? QIcon(wish.icon) : QIcon::fromTheme(wish.icon);
    const QPixmap pixmap = icon.isNull() ? QPixmap() : icon.pixmap(wish.pixels, wish.ratio);
    if (!pixmap.isNull()) {
        m_icons.insert(wish.key, pixmap);
        m_changed();
    }
    if (!m_wishes.empty()) {
        m_later.start(betweenIcons);
    }
}

} // namespace vantor::hosts::app
