// SPDX-License-Identifier: MIT
#include "hosts/widget/TrayRing.hpp"

#include "hosts/qt/HostText.hpp"
#include "hosts/qt/LayerPainter.hpp"

#include <QPainter>
#include <QPixmap>
#include <utility>

namespace vantor::hosts::widget {

namespace {

constexpr int iconSize = 64;

/// The strokes alone, at rest: in an icon's size nobody reads the texts.
platform::Layers strokesOf(const platform::Layers& layers) {
    platform::Layers strokes;
    for (const platform::Layer& layer : layers) {
        if (std::holds_alternative<platform::StrokeLayer>(layer)) {
            strokes.push_back(layer);
        }
    }
    return strokes;
}

QIcon ringIcon(const platform::Layers& strokes, const qt::Theme& theme) {
    QPixmap pixmap(iconSize, iconSize);
    pixmap.fill(Qt::transparent);
    const auto* track = strokes.empty() ? nullptr : std::get_if<platform::StrokeLayer>(&strokes.front());
    if (track != nullptr && !track->path.arcs.empty()) {
        const platform::ArcSegment& arc = track->path.arcs.front();
        const double reach = arc.radius + 6;
        QPainter painter(&pixmap);
        painter.scale(iconSize / (2 * reach), iconSize / (2 * reach));
        painter.translate(reach - arc.center.x, reach - arc.center.y);
        qt::paintLayers(painter, strokes, theme, QRectF(-1000, -1000, 3000, 3000));
    }
    return pixmap;
}

} // namespace

TrayRing::TrayRing(std::vector<qt::RingView*> rings, QMenu& menu, std::function<void()> pressed)
    : m_rings(std::move(rings)) {
    m_icon.setContextMenu(&menu);
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [pressed = std::move(pressed)](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) {
                             pressed();
                         }
                     });
}

void TrayRing::update(const qt::Theme& theme) {
    platform::Layers strokes = strokesOf(m_rings.front()->restingLayers());
    QStringList lines;
    for (const qt::RingView* ring : m_rings) {
        lines << qt::valueText(ring->caption().toStdString(), ring->percentage().toStdString());
    }
    const QString tip = lines.join(QLatin1Char('\n'));
    if (m_icon.toolTip() != tip) {
        m_icon.setToolTip(tip);
    }
    if (!qt::changedArea(m_drawn, strokes).isEmpty()) {
        m_icon.setIcon(ringIcon(strokes, theme));
        m_drawn = std::move(strokes);
        m_icon.show();
    }
}

} // namespace vantor::hosts::widget
