// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"

#include <memory>

namespace vantor {

/// Sends a ring to a fraction. Without a chart, or a model in it, there is nothing to send. Main thread.
void showProgress(const std::shared_ptr<TEReportTableViewController::ChartContainer>& chart, double fraction);

} // namespace vantor
