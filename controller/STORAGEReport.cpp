// SPDX-License-Identifier: MIT
#include "controller/ByteText.hpp"
#include "controller/Outlet.hpp"
#include "controller/ReportSteps.hpp"
#include "controller/ShowProgress.hpp"
#include "controller/TEReportTableViewController.hpp"
#include "metrics/DiskStatus.hpp"
#include "settings/SharedStore.hpp"

#include <utility>

namespace vantor {

namespace {

using StorageReport = std::pair<StorageFigures, StorageTexts>;

/// Total and used are asked for twice, once for the text and once for the ring, so that each is what the file
/// system said when it was made.
StorageReport sampleStorage() {
    StorageReport report;
    auto& [figures, texts] = report;
    texts.total = storageText(DiskStatus::getTotalDiskSpace());
    const DiskStatus::Total total = DiskStatus::getTotalAndReservedDiskSpace();
    figures.total = total.total;
    figures.reserved = total.reserved;
    texts.used = storageText(DiskStatus::getUsedDiskSpace());
    figures.used = DiskStatus::getUsedDiskSpace();
    figures.free = DiskStatus::getFreeDiskSpace();
    texts.free = storageText(figures.free);
    figures.releasable = DiskStatus::getReleasableDiskSpace();
    texts.releasable = storageText(figures.releasable);
    return report;
}

} // namespace

void TEReportTableViewController::reportSTORAGEStatus() {
    report(sampleStorage, [controller = self()](const StorageReport& sampled) {
        controller->displaySTORAGE(sampled.first, sampled.second);
    });
}

void TEReportTableViewController::displaySTORAGE(const StorageFigures& figures, const StorageTexts& texts) {
    outlet(*this, totalSTORAGELabel)->setText(texts.total);
    outlet(*this, usedSTORAGELabel)->setText(texts.used);
    outlet(*this, freeSTORAGELabel)->setText(texts.free);
    outlet(*this, releasableSTORAGELabel)->setText(texts.releasable);
    outlet(*this, releasableSTORAGEStackView)->setHidden(!sharedFlag(SettingsKey::isReleasableSTORAGEShow));
    m_records.storage = figures;
    showProgress(m_storateChartView, static_cast<double>(figures.used) / static_cast<double>(figures.total));
    reported(platform::Source::storage);
}

} // namespace vantor
