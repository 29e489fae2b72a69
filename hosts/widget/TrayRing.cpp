// SPDX-License-Identifier: MIT
#include "hosts/widget/TrayRing.hpp"

#include "controller/Sections.hpp"
#include "hosts/qt/HostText.hpp"
#include "hosts/qt/LayerPainter.hpp"

#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace vantor::hosts::widget {

namespace {

constexpr std::array iconSizes{16, 22, 24, 32, 48, 64}; // pixels, as panels show them
constexpr double strokeShare = 0.2;                     // of the icon's width
constexpr int trackAlpha = 130;                         // of 255

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

/// The part of the ring that one arc covers.
void paintArc(QPainter& painter, const QRectF& square, const platform::ArcSegment& arc, QColor color,
              Qt::PenCapStyle cap) {
    constexpr double sixteenths = 16 * 180 / std::numbers::pi; // the toolkit's unit; it turns the other way
    painter.setPen(QPen(color, square.width() * strokeShare / (1 - strokeShare), Qt::SolidLine, cap));
    painter.drawArc(square, static_cast<int>(std::lround(-arc.startAngle.radians * sixteenths)),
                    static_cast<int>(std::lround(-arc.sweep() * sixteenths)));
}

QPixmap ringPixmap(int size, const platform::StrokeLayer* stroke, platform::Appearance appearance) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inset = size * strokeShare / 2;
    const QRectF square = QRectF(0, 0, size, size).adjusted(inset, inset, -inset, -inset);
    const platform::ArcSegment whole{{}, 1, {0}, {2 * std::numbers::pi}, false};
    paintArc(painter, square, whole, QColor(128, 128, 128, trackAlpha), Qt::FlatCap);
    if (stroke != nullptr && !stroke->path.arcs.empty()) {
        paintArc(painter, square, stroke->path.arcs.front(), qt::painted(stroke->color, appearance),
                 Qt::RoundCap);
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

void TrayRing::tell(const QString& text, std::function<void()> pressed) {
    QObject::disconnect(&m_icon, &QSystemTrayIcon::messageClicked, nullptr, nullptr);
    QObject::connect(&m_icon, &QSystemTrayIcon::messageClicked, &m_icon, std::move(pressed));
    m_icon.showMessage(QStringLiteral("Vantor"), text, m_icon.icon());
}

QIcon ringIcon(const platform::Layers& strokes, platform::Appearance appearance) {
    const auto* const stroke = strokes.size() > 1 ? std::get_if<platform::StrokeLayer>(&strokes.back())
                                                  : nullptr; // the first is its track
    QIcon icon;
    for (const int size : iconSizes) {
        icon.addPixmap(ringPixmap(size, stroke, appearance));
    }
    return icon;
}

void TrayRing::update(const qt::Theme& theme, const std::vector<platform::SourceFailure>& failures) {
    const auto hasFailed = [&failures](const Section& section) {
        return std::ranges::find(failures, section.source, &platform::SourceFailure::source) !=
               failures.end();
    };
    const bool firstFailed = hasFailed(sections.front());
    platform::Layers strokes = firstFailed ? platform::Layers() : strokesOf(m_rings.front()->restingLayers());
    QStringList lines;
    std::size_t next = 0;
    for (const Section& section : sections) {
        if (section.chart) {
            const qt::RingView& ring = *m_rings.at(next++);
            const std::string value = hasFailed(section) ? qt::hostText("host_UNAVAILABLE").toStdString()
                                                         : ring.percentage().toStdString();
            lines << qt::valueText(ring.caption().toStdString(), value);
        }
    }
    const QString tip = lines.join(QLatin1Char('\n'));
    if (m_icon.toolTip() != tip) {
        m_icon.setToolTip(tip);
    }
    if (!m_icon.isVisible() || m_hasFailed != firstFailed || !qt::changedArea(m_drawn, strokes).isEmpty()) {
        m_icon.setIcon(ringIcon(strokes, theme.appearance));
        m_drawn = std::move(strokes);
        m_hasFailed = firstFailed;
        m_icon.show();
    }
}

} // namespace vantor::hosts::widget
