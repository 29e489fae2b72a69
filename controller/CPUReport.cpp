// SPDX-License-Identifier: MIT
#include "controller/Outlet.hpp"
#include "controller/ReportSteps.hpp"
#include "controller/ShowProgress.hpp"
#include "controller/TEReportTableViewController.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace vantor {

namespace {

/// "12.50 %": two decimals and a point in every locale.
std::string shareText(double percent) {
    if (std::isnan(percent)) {
        return "nan %"; // never with the sign that 0/0 carries on some processors
    }
    std::array<char, 320> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), percent, std::chars_format::fixed, 2).ptr;
    return std::string(digits.data(), end) + " %";
}

} // namespace

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
