// SPDX-License-Identifier: MIT
#include "charts/Arc.hpp"

namespace vantor {

platform::Path Arc::path(const platform::CGRect& rect) const {
    platform::Path path;
    path.addArc({platform::CGRectGetMidX(rect), platform::CGRectGetMidY(rect)},
                platform::CGRectGetWidth(rect) * 0.5, startAngle, endAngle, clockwise);
    return path;
}

} // namespace vantor
