// SPDX-License-Identifier: MIT
#include "charts/ArcChartStyle.hpp"

#include "charts/Arc.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace vantor {

namespace {

using platform::CGRect;

constexpr double captionHeight = 15;
constexpr double captionSize = 11;
constexpr double captionMinimumScale = 0.6;

} // namespace

std::string percentText(double fraction) {
    if (std::isnan(fraction)) {
        return "nan%"; // never with the sign that a not-a-number may carry
    }
    std::array<char, 320> digits{}; // the largest double has 309 before its point
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), fraction * 100,
                                   std::chars_format::fixed, 0)
                         .ptr;
    return std::string(digits.data(), end) + '%';
}

platform::Layers ArcChartStyle::body(const ProgressConfiguration& configuration, const CGRect& square) const {
    const double fraction = configuration.fractionCompleted.value_or(0);
    const platform::Path arc = Arc{startAngle, endAngle, clockwise}.path(square);

    platform::StrokeLayer outerRing = roundStroke(arc, outerRingLineWidth, outerRingColor);
    outerRing.opacity = outerRingOpacity;

    platform::TextLayer percentage;
    percentage.text = percentText(fraction);
    percentage.frame = square;

    platform::TextLayer caption;
    caption.text = title;
    caption.fontSize = captionSize;
    caption.minimumScaleFactor = captionMinimumScale;
    caption.color = titleColor;
    const double top = platform::CGRectGetMaxY(square) - captionHeight + titleTopPadding;
    caption.frame = {{square.origin.x, top}, {square.size.width, captionHeight}};

    return {outerRing,
            roundStroke(arc.trimmed(0, configuration.fractionShown.value_or(fraction)), innerRingLineWidth,
                        innerRingColor),
            percentage, caption};
}

} // namespace vantor
