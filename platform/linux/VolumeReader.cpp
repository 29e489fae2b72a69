// SPDX-License-Identifier: MIT
#include "platform/linux/VolumeReader.hpp"

#include "platform/time/DispatchQueue.hpp"

#include <algorithm>
#include <new>
#include <utility>

namespace vantor::platform::linux_machine {

VolumeReader::VolumeReader(const MachineOptions& options, FailureBoard& failures)
    : m_options(options), m_failures(failures), m_mounts(options.procRoot) {}

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

std::optional<VolumeFigures> VolumeReader::read(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    Report& report = reportOf(currentWorkItem());
    try {
        return readFor(report, path);
    } catch (const std::bad_alloc&) {
        report.path.clear();
        m_localPath.clear(); // a change of mounts may have been noticed, and not yet looked at
        m_failures.failForMemory(Source::storage);
        return std::nullopt;
    }
}

std::optional<VolumeFigures> VolumeReader::readFor(Report& report, const std::string& path) {
    std::chrono::nanoseconds now = m_options.clock();
    const bool goesOn = continues(report, path, now);
    if (!goesOn) {
        report.began = now;
        report.path = path;
    }
    if (!goesOn || (report.figures && now - report.asked >= fresh)) {
        VolumeAnswer answer = ask(path);
        now = m_options.clock(); // a volume on a network takes its time
        report.asked = now;
        if (answer.figures) {
            report.figures = answer.figures;
            m_failures.clear(Source::storage);
        } else if (!goesOn) {
            report.figures.reset();
            m_failures.fail(Source::storage, std::move(answer.reason));
        }
    }
    report.lastCall = now;
    return report.figures;
}

} // namespace vantor::platform::linux_machine
