// SPDX-License-Identifier: MIT
#include "hosts/app/Ring.hpp"

#include "charts/Arc.hpp"
#include "charts/ArcChartStyle.hpp"

#include <numbers>
#include <utility>

namespace vantor::hosts::app {

using platform::Angle;
using platform::CGRect;

namespace {

constexpr Angle lowerLeft{3 * std::numbers::pi / 4}, lowerRight{std::numbers::pi / 4};
constexpr double trackOpacity = 0.3;

} // namespace

platform::Layers RingContent::body(const CGRect& rect, platform::Instant now) const {
    const double inset = size.stroke / 2;
    const CGRect line{{rect.origin.x + inset, rect.origin.y + inset},
                      {rect.size.width - 2 * inset, rect.size.height - 2 * inset}};
    const platform::Path arc = Arc{lowerLeft, lowerRight, false}.path(line);
    platform::StrokeLayer track = roundStroke(arc, size.track, platform::UIColor::secondaryLabelColor());
    track.opacity = trackOpacity;
    platform::Layers layers{
        track, roundStroke(arc.trimmed(0, animation().valueAt(now)), size.stroke, model->innerRingColor())};
    if (size.text > 0) {
        platform::TextLayer percentage;
        percentage.text = percentText(model->progress());
        percentage.fontSize = size.text;
        percentage.frame = rect;
        layers.emplace_back(percentage);
    }
    return layers;
}

Ring::Ring(std::shared_ptr<ArcChartViewModel> model, const RingSize& size, QWidget* parent)
    : QWidget(parent),
      m_size(size),
      m_host(
          std::make_shared<platform::UIHostingController<RingContent>>(RingContent{std::move(model), size})),
      m_view(new qt::RingView(this)) {
    m_view->setFocusPolicy(Qt::NoFocus);
    m_view->setHasFigure(false);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_view->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Ring::setGround(const QColor& ground) {
    if (std::exchange(m_ground, ground) != ground) {
        fit();
    }
}

void Ring::setLook(const Look& look) {
    m_theme = look.theme;
    fit();
}

void Ring::fit() {
    qt::Theme theme = m_theme;
    if (m_ground.isValid()) {
        theme.card = m_ground;
    }
    const int side = theme.pixels(m_size.diameter);
    m_view->setTheme(theme);
    m_view->setContentsMargins(0, 0, 0, 0);
    m_view->setFixedSize(side, side);
    setFixedSize(side, side);
    m_view->setHostedView(std::dynamic_pointer_cast<platform::UIHostingView>(m_host->view()),
                          {{0, 0}, {m_size.diameter, m_size.diameter}});
}

} // namespace vantor::hosts::app
