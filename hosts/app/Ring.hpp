// SPDX-License-Identifier: MIT
#pragma once

#include "charts/ArcChartViewModel.hpp"
#include "hosts/app/Look.hpp"
#include "hosts/qt/RingView.hpp"

#include <QWidget>
#include <memory>

namespace vantor::hosts::app {

/// How a ring is drawn, in points.
struct RingSize {
    double diameter = 0; ///< with its stroke
    double stroke = 0;
    double track = 0;
    double text = 0; ///< of the percentage in its middle; 0: none
};
inline constexpr RingSize largeRing{96, 11, 2, TextSize::title}, smallRing{32, 4.5, 1.5, 0};

/// A ring as a value: 270 degrees from the lower left.
struct RingContent {
    std::shared_ptr<ArcChartViewModel> model;
    RingSize size;

    [[nodiscard]] platform::Layers body(const platform::CGRect& rect, platform::Instant now) const;
    [[nodiscard]] platform::LinearAnimation animation() const { return model->animation(); }
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> changed) const {
        return model->observe(std::move(changed));
    }
};

/// Shows a model as a picture: it neither takes the focus nor presses.
class Ring final : public QWidget, public Looked {
    Q_OBJECT // or looking for one finds any widget
        public
        : Ring(std::shared_ptr<ArcChartViewModel> model, const RingSize& size, QWidget* parent = nullptr);

    [[nodiscard]] qt::RingView& view() { return *m_view; }
    /// The colour that it stands on: the card's, unless told otherwise.
    void setGround(const QColor& ground);
    void setLook(const Look& look) override;

private:
    void fit();

    RingSize m_size;
    std::shared_ptr<platform::UIHostingController<RingContent>> m_host;
    qt::RingView* m_view;
    qt::Theme m_theme;
    QColor m_ground;
};

} // namespace vantor::hosts::app
