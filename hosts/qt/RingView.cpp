// SPDX-License-Identifier: MIT
#include "hosts/qt/RingView.hpp"

#include "hosts/qt/Buttons.hpp"
#include "hosts/qt/LayerPainter.hpp"
#include "hosts/qt/PaintNow.hpp"

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace vantor::hosts::qt {

using platform::Instant;
using platform::Layers;
using platform::StrokeLayer;
using platform::TextLayer;

namespace {

constexpr double smallestMove = 0.5; // device pixels
constexpr double tileMargin = 4;     // points around the ring, for hover and focus
constexpr double tileWidth = 97, tileHeight = 100;
constexpr auto noFigure = "–";

} // namespace

RingView::RingView(QWidget* parent) : QAbstractButton(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent); // the card below needs no repaint when a ring moves
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void RingView::setHostedView(std::shared_ptr<platform::UIHostingView> view, const platform::CGRect& frame) {
    m_view = std::move(view);
    m_frame = frame;
    showAtRest();
    repaintAll();
}

void RingView::setTheme(const Theme& theme) {
    m_theme = theme;
    const int margin = theme.pixels(tileMargin);
    setContentsMargins(margin, margin, margin, margin);
    updateGeometry();
    repaintAll();
}

void RingView::setHasFigure(bool has) {
    if (std::exchange(m_hasFigure, has) != has) {
        showAtRest();
    }
}

Layers RingView::layersAt(Instant now) const {
    Layers layers = m_view ? m_view->layers(m_frame, now) : Layers{};
    if (!m_hasFigure) {
        bool isTrack = true;
        bool isFigure = true;
        for (platform::Layer& layer : layers) {
            if (auto* stroke = std::get_if<StrokeLayer>(&layer)) {
                stroke->path.arcs.resize(std::exchange(isTrack, false) ? stroke->path.arcs.size() : 0);
            } else if (std::exchange(isFigure, false)) {
                std::get<TextLayer>(layer).text = noFigure;
            }
        }
    }
    return layers;
}

void RingView::showAt(Instant now) {
    m_motion.reset();
    replace(layersAt(now));
    m_motion = motionFrom(now);
}

void RingView::showAtRest() {
    m_motion.reset();
    replace(restingLayers());
}

/// Where the way from this instant on is that of one arc's end.
std::optional<RingView::Motion> RingView::motionFrom(Instant now) const {
    const Layers rest = restingLayers();
    const std::optional<std::size_t> stroke = movedStroke(m_layers, rest);
    if (!stroke) {
        return std::nullopt;
    }
    const auto& from = std::get<StrokeLayer>(m_layers[*stroke]).path.arcs;
    const auto& to = std::get<StrokeLayer>(rest[*stroke]).path.arcs;
    if (from.size() > 1 || to.size() > 1) {
        return std::nullopt;
    }
    const platform::ArcSegment& arc = to.empty() ? from.front() : to.front();
    if (arc.clockwise) {
        return std::nullopt;
    }
    const auto endOf = [&arc](const auto& arcs) {
        return (arcs.empty() ? arc.startAngle : arcs.front().endAngle).radians;
    };
    const platform::LinearAnimation animation = m_view->animation();
    const auto whole =
        std::chrono::duration_cast<Instant::duration>(std::chrono::duration<double>(animation.duration));
    return Motion{*stroke, endOf(from), endOf(to), now, animation.start + whole};
}

bool RingView::moveOn(Instant now) {
    if (!m_motion) {
        showAtRest();
        return false;
    }
    const bool isLast = now >= m_motion->end;
    const std::chrono::duration<double> passed = now - m_motion->begin;
    const double end =
        isLast ? m_motion->to
               : std::lerp(m_motion->from, m_motion->to, passed / (m_motion->end - m_motion->begin));
    auto& arcs = std::get<StrokeLayer>(m_layers[m_motion->stroke]).path.arcs;
    if (arcs.empty()) {
        arcs = std::get<StrokeLayer>(restingLayers()[m_motion->stroke]).path.arcs;
        arcs.front().endAngle = arcs.front().startAngle;
    }
    const double before = std::exchange(arcs.front().endAngle.radians, end);
    const double lineWidth = std::get<StrokeLayer>(m_layers[m_motion->stroke]).lineWidth;
    const QRect area = pixels(endArea(arcs.front(), lineWidth, before, end)) & rect();
    if (!paintNow(*this, area, [&](QImage& window, const QRect& part) { paintFrame(window, part, end); })) {
        update(area);
    }
    if (isLast) {
        m_layers = restingLayers(); // which is what is on screen now
        m_motion.reset();
    }
    return !isLast;
}

void RingView::replace(Layers layers) {
    if (layers == m_layers) {
        return;
    }
    const QRectF area = changedArea(m_layers, layers);
    const QString before = percentage();
    m_layers = std::move(layers);
    update(pixels(area));
    if (before != percentage()) {
        announceValue();
    }
}

QRect RingView::pixels(const QRectF& points) const {
    return QRectF(points.topLeft() * m_theme.pointScale, points.size() * m_theme.pointScale).toAlignedRect();
}

/// The ground, the hover and the theme are part of the picture that is kept while the ring moves.
void RingView::repaintAll() {
    if (m_motion) {
        m_motion->still.reset();
    }
    update();
}

RingPicture RingView::pictureWithout(std::optional<std::size_t> stroke, const QPointF& origin,
                                     double pixelRatio) const {
    RingPicture picture(origin, pixelRatio, size(), m_theme,
                        [this](QPainter& painter) { paintGround(painter); });
    picture.add(m_layers, m_theme, stroke);
    return picture;
}

void RingView::paintFrame(QImage& window, const QRect& area, double end) {
    std::optional<RingPicture>& still = m_motion->still;
    const double ratio = window.devicePixelRatio();
    const QPointF origin = QPointF(mapTo(this->window(), QPoint())) * ratio;
    if (!still || still->pixelRatio != ratio || still->origin != origin) {
        still = pictureWithout(m_motion->stroke, origin, ratio);
    }
    const auto& stroke = std::get<StrokeLayer>(m_layers[m_motion->stroke]);
    if (const std::optional<RoundArc> arc = still->arcOnDevice(stroke, m_theme)) {
        arc->draw(window, area, still->image, still->at, end);
    }
}

/// Quietly: a listening screen reader knows the new value, and nothing is read out.
void RingView::announceValue() {
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent changed(this, percentage());
        QAccessible::updateAccessibility(&changed);
        QAccessibleEvent renamed(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&renamed);
    }
}

double RingView::speedAt(Instant now) const {
    if (!m_view || !m_hasFigure) {
        return 0;
    }
    const platform::LinearAnimation animation = m_view->animation();
    if (!animation.isRunningAt(now) || !(animation.duration > 0)) {
        return 0;
    }
    const double way = std::abs(animation.to - animation.from) * longestStroke(m_layers) *
                       m_theme.pointScale * devicePixelRatioF();
    return way < smallestMove ? 0 : way / animation.duration;
}

QString RingView::textLayer(std::size_t index) const {
    for (const platform::Layer& layer : m_layers) {
        if (const auto* text = std::get_if<TextLayer>(&layer)) {
            if (index == 0) {
                return QString::fromStdString(text->text);
            }
            --index;
        }
    }
    return {};
}

QSize RingView::sizeHint() const {
    return {m_theme.pixels(tileWidth), m_theme.pixels(tileHeight)};
}

bool RingView::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::FocusOut:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        repaintAll();
        break;
    default:;
    }
    return QAbstractButton::event(event);
}

void RingView::focusInEvent(QFocusEvent* event) {
    m_keyboardFocus = isKeyboardFocus(*event, m_keyboardFocus);
    repaintAll();
}

/// Return presses as Space does.
void RingView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

/// The card's colour; a soft tile when the pointer is over the ring or holds it, and a frame on the focus.
void RingView::paintGround(QPainter& painter) const {
    painter.fillRect(rect(), m_theme.card);
    const bool focused = m_keyboardFocus && hasFocus() && window()->isActiveWindow();
    if (!isDown() && !underMouse() && !focused) {
        return;
    }
    const double line = 2 * m_theme.pointScale, radius = 12 * m_theme.pointScale;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(focused ? QPen(m_theme.accent, line) : QPen(Qt::NoPen));
    painter.setBrush(isDown() ? m_theme.hoverFill : underMouse() ? m_theme.fill : m_theme.card);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
}

void RingView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QTransform device = painter.deviceTransform();
    if (painter.paintEngine()->type() == QPaintEngine::Raster && device.type() <= QTransform::TxScale &&
        device.m11() == device.m22()) {
        paintPixels(painter, device.map(QPointF()), device.m11());
        return;
    }
    painter.setClipRect(event->rect());
    paintGround(painter);
    const double scale = m_theme.pointScale;
    painter.scale(scale, scale);
    const QRectF dirty = event->rect();
    paintLayers(painter, m_layers, m_theme, QRectF(dirty.topLeft() / scale, dirty.size() / scale));
}

/// What is painted when a motion begins is what its frames need, but for the one stroke.
void RingView::paintPixels(QPainter& painter, const QPointF& origin, double pixelRatio) {
    if (!m_motion) {
        pictureWithout(std::nullopt, origin, pixelRatio).paint(painter);
        return;
    }
    m_motion->still = pictureWithout(m_motion->stroke, origin, pixelRatio);
    RingPicture whole = *m_motion->still;
    whole.add({m_layers[m_motion->stroke]}, m_theme);
    whole.paint(painter);
}

} // namespace vantor::hosts::qt
