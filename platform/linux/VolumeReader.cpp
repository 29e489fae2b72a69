// SPDX-License-Identifier: MIT
#include "platform/linux/VolumeReader.hpp"

#include "platform/time/DispatchQueue.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::linux {

VolumeReader::VolumeReader(const MachineOptions& options, FailureBoard& failures)
    : m_options(options), m_failures(failures), m_mounts(options.tree) {}

bool VolumeReader::continues(const Report& report, const std::string& path, std::chrono::nanoseconds now) {
    if (report.path != path) {
        return false;
    }
    const bool outlasts = now - report.began >= longestReport;
    return report.workItem != 0 || now - report.lastCall < (outlasts ? shortestGap : sameReport);
}

VolumeReader::Report& VolumeReader::reportOf(std::uint64_t workItem) {
    if (workItem == 0) {
        return m_reports.front();
    }
    const auto known = std::ranges::find(m_reports, workItem, &Report::workItem);
    if (known != m_reports.end()) {
        return *known;
    }
    // More places than workers: the one not called for longest is over.
    Report& oldest =
        *std::min_element(m_reports.begin() + 1, m_reports.end(),
                          [](const Report& a, const Report& b) { return a.lastCall < b.lastCall; });
    oldest = Report{};
    oldest.workItem = workItem;
    return oldest;
}

VolumeAnswer VolumeReader::ask(const std::string& path) {
    if (!m_mounts.changed() && path == m_localPath) {
        return queryVolume(path);
    }
    VolumeWaiter::Result result = m_waiter.ask(path);
    m_localPath = result.local ? path : std::string();
    return std::move(result.answer);
}

void VolumeReader::begin(Report& report, const std::string& path, std::chrono::nanoseconds now) {
    report.began = now;
    report.figures.reset();
    report.path = path;
}

/// Asks where it is time to; what comes of it is in the report.
void VolumeReader::refresh(Report& report, const std::string& path, std::chrono::nanoseconds now) {
    const bool goesOn = continues(report, path, now);
    report.lastCall = now;
    if (!goesOn) {
        begin(report, path, now);
    } else if (!report.figures || now - report.asked < fresh) {
        return;
    }
    VolumeAnswer answer = ask(path);
    report.lastCall = report.asked = m_options.clock(); // a volume on a network takes its time
    if (answer.figures) {
        report.figures = answer.figures;
        m_failures.clear(Source::storage);
    } else if (!goesOn) {
        m_failures.fail(Source::storage, std::move(answer.reason));
    }
}

std::optional<VolumeFigures> VolumeReader::read(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    Report& report = reportOf(currentWorkItem());
    refresh(report, path, m_options.clock());
    return report.figures;
}

} // namespace vantor::platform::linux
