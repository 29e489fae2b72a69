// SPDX-License-Identifier: MIT
#include "platform/linux/VolumeReader.hpp"

#include <utility>

namespace vantor::platform::linux_machine {

VolumeReader::VolumeReader(const MachineOptions& options, FailureBoard& failures)
    : m_options(options), m_failures(failures), m_mounts(options.procRoot) {}

bool VolumeReader::continuesReport(std::chrono::nanoseconds now) const {
    const bool outlasts = now - m_reportBegan >= longestReport;
    return now - m_lastCall < (outlasts ? shortestGap : sameReport);
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
    const std::chrono::nanoseconds now = m_options.clock();
    const bool continues = path == m_path && continuesReport(now);
    if (!continues) {
        m_reportBegan = now;
        m_path = path;
    }
    if (!continues || (m_figures && now - m_asked >= fresh)) {
        VolumeAnswer answer = ask(path);
        m_asked = m_options.clock();
        if (answer.figures) {
            m_figures = answer.figures;
            m_failures.clear(Source::storage);
        } else if (!continues) {
            m_figures.reset();
            m_failures.fail(Source::storage, std::move(answer.reason));
        }
    }
    m_lastCall = m_options.clock();
    return m_figures;
}

} // namespace vantor::platform::linux_machine
