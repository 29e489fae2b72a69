// SPDX-License-Identifier: MIT
#include "charts/ArcChartView.hpp"

namespace vantor {

platform::Layers ArcChartView::body(const platform::CGRect& rect, platform::Instant now) const {
    const ArcChartStyle style{
        .startAngle = startAngle,
        .endAngle = endAngle,
        .clockwise = clockwise,
        .outerRingLineWidth = outerRingLineWidth,
        .outerRingColor = outerRingColor,
        .outerRingOpacity = outerRingOpacity,
        .innerRingLineWidth = innerRingLineWidth,
        .innerRingColor = arcChartViewModel->innerRingColor(),
        .title = title,
        .titleColor = titleColor,
        .titleTopPadding = titleTopPadding,
    };
    return style.body({arcChartViewModel->progress(), animation().valueAt(now)},
                      platform::squareInside(rect));
}

} // namespace vantor
