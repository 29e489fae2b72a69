// SPDX-License-Identifier: MIT
#include "controller/Outlet.hpp"
#include "controller/ReportSteps.hpp"
#include "controller/ShareText.hpp"
#include "controller/ShowProgress.hpp"
#include "controller/TEReportTableViewController.hpp"

#include <cmath>

namespace vantor {

void TEReportTableViewController::reportCPUStatus() {
    report([] { return CpuStatus::getCpuUsage(); },
           [controller = self()](const CpuUsage& usage) { controller->displayCPU(usage); });
}

void TEReportTableViewController::resumeCPUStatus() {
    constexpr double second = 1;
    report([] { return CpuStatus::getCpuUsage(); }, [](const CpuUsage&) { /* of the pause */ });
    if (m_shareAfterPause != nullptr) {
        m_shareAfterPause->invalidate();
    }
    m_shareAfterPause = platform::NSTimer::scheduledTimerWithTimeInterval(
        second, [controller = self()] { controller->reportCPUStatus(); }, false);
}

void TEReportTableViewController::displayCPU(const CpuUsage& usage) {
    outlet(*this, userCPULabel)->setText(shareText(usage.user));
    outlet(*this, systemCPULabel)->setText(shareText(usage.system));
    outlet(*this, inactiveCPULabel)->setText(shareText(usage.idle));
    const double busy = usage.system + usage.nice + usage.user;
    if (std::isnan(busy)) {
        reportCPUStatus(); // no tick passed between two samples: a fresh report overwrites this one
    }
    m_records.processor = usage;
    showProgress(m_cpuChartView, busy / 100.0);
    reported(platform::Source::processor);
}

} // namespace vantor
