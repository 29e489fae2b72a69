// SPDX-License-Identifier: MIT
#pragma once

#include "charts/ArcChartStyle.hpp"
#include "charts/ArcChartViewModel.hpp"
#include "platform/drawing/LinearAnimation.hpp"

#include <functional>
#include <memory>
#include <string>

namespace vantor {

/// A ring chart as a value: a model to observe and how to draw it. Fills the largest square of the space it
/// gets.
struct ArcChartView {
    std::shared_ptr<ArcChartViewModel> arcChartViewModel;
    platform::Angle startAngle;
    platform::Angle endAngle;
    bool clockwise = false;
    double outerRingLineWidth = 0;
    platform::UIColor outerRingColor = platform::UIColor::secondaryLabelColor();
    double outerRingOpacity = 0;
    double innerRingLineWidth = 0;
    std::string title;
    platform::UIColor titleColor = platform::UIColor::labelColor();
    double titleTopPadding = 0;

    /// The ring's layers at an instant. Only the trimmed end of the inner ring moves with time.
    [[nodiscard]] platform::Layers body(const platform::CGRect& rect, platform::Instant now) const;
    [[nodiscard]] platform::LinearAnimation animation() const { return arcChartViewModel->animation(); }
    [[nodiscard]] std::shared_ptr<void> observe(std::function<void()> changed) const {
        return arcChartViewModel->observe(std::move(changed));
    }
};

} // namespace vantor
