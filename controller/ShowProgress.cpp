// SPDX-License-Identifier: MIT
#include "controller/ShowProgress.hpp"

namespace vantor {

void showProgress(const std::shared_ptr<TEReportTableViewController::ChartContainer>& chart,
                  double fraction) {
    if (chart != nullptr && chart->hostingController()->rootView()) {
        if (const auto& model = chart->hostingController()->rootView()->arcChartViewModel) {
            model->setProgress(fraction);
        }
    }
}

} // namespace vantor
