// SPDX-License-Identifier: MIT
#include "controller/ByteText.hpp"
#include "controller/Outlet.hpp"
#include "controller/ReportSteps.hpp"
#include "controller/ShowProgress.hpp"
#include "controller/TEReportTableViewController.hpp"
#include "metrics/MemoryStatus.hpp"
#include "settings/SharedStore.hpp"

namespace vantor {

void TEReportTableViewController::reportRAMStatus() {
    report(
        [] {
            const std::optional<platform::vm_statistics64> record = getVMStatistics64();
            return record ? MemoryStatus::getMemoryStatus(*record) : MemoryFigures{};
        },
        [controller = self()](const MemoryFigures& figures) { controller->displayRAM(figures); });
}

void TEReportTableViewController::displayRAM(const MemoryFigures& figures) {
    const bool inactiveCountsAsFree = sharedFlag(SettingsKey::isInactiveRAMHide);
    outlet(*this, freeRAMLabel)
        ->setText(memoryText(figures.at(inactiveCountsAsFree ? "free+inactive" : "free")));
    const std::int64_t used = figures.at("used");
    outlet(*this, usedRAMLabel)->setText(memoryText(used));
    const std::int64_t total = figures.at("total");
    m_records.memory = figures;
    showProgress(m_ramChartView, static_cast<double>(used) / static_cast<double>(total));
    reported(platform::Source::memory);
}

} // namespace vantor
