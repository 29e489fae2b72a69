// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/Layer.hpp"

#include <optional>
#include <string>

namespace vantor {

/// A fraction as a progress view hands it to its style.
struct ProgressConfiguration {
    std::optional<double>
        fractionCompleted;               ///< what the number in the middle says; absent while indeterminate
    std::optional<double> fractionShown; ///< where the ring's end is at this instant of its animation
};

/// The recipe of a ring: a faint track, the ring on it, the percentage in the middle and a caption below.
struct ArcChartStyle {
    platform::Angle startAngle;
    platform::Angle endAngle;
    bool clockwise = false;
    double outerRingLineWidth = 0; ///< points
    platform::UIColor outerRingColor = platform::UIColor::secondaryLabelColor();
    double outerRingOpacity = 0;   ///< 0...1
    double innerRingLineWidth = 0; ///< points
    platform::UIColor innerRingColor = platform::UIColor::systemGreenColor();
    std::string title;
    platform::UIColor titleColor = platform::UIColor::labelColor();
    double titleTopPadding = 0; ///< how far the caption hangs below the square, in points

    /// Four layers, back to front, for a square.
    [[nodiscard]] platform::Layers body(const ProgressConfiguration& configuration,
                                        const platform::CGRect& square) const;
};

/// A fraction as whole percent: "34%", rounded half to even; "nan%" for not-a-number.
[[nodiscard]] std::string percentText(double fraction);

} // namespace vantor
