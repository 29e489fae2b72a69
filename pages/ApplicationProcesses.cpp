// SPDX-License-Identifier: MIT
#include "pages/ApplicationProcesses.hpp"

#include "pages/Shares.hpp"

#include <algorithm>

namespace vantor {

std::vector<ApplicationProcesses>
ProcessSampler::look(const std::vector<platform::ApplicationUse>& applications, std::size_t processors) {
    const auto now = m_clock();
    const double elapsed = std::chrono::duration<double, std::micro>(now - m_time).count();
    const double all = elapsed * static_cast<double>(std::max<std::size_t>(processors, 1));
    std::map<Key, std::uint64_t> used;
    std::vector<ApplicationProcesses> looked;
    for (const platform::ApplicationUse& application : applications) {
        platform::ApplicationDetail detail = platform::currentWorkload().detail(application);
        ApplicationProcesses& behind = looked.emplace_back();
        behind.peak = detail.peak;
        for (platform::ProcessUse& use : detail.processes) {
            const Key key{use.identity.number, use.identity.start};
            used[key] = use.processorTime;
            std::optional<double> percent;
            if (const auto before = m_used.find(key); before != m_used.end() && all > 0) {
                const std::uint64_t grown = std::max(use.processorTime, before->second) - before->second;
                percent = std::min(static_cast<double>(grown) / all * 100, 100.0);
            }
            behind.rows.push_back({std::move(use), percent});
        }
    }
    m_used = std::move(used);
    m_time = now;
    return looked;
}

void fitWithin(double shown, ApplicationProcesses& application) {
    double sum = 0;
    for (const ProcessRow& row : application.rows) {
        sum += row.percent.value_or(0);
    }
    const double scale = scaleWithin(shown, sum);
    std::vector<double> parts;
    parts.reserve(application.rows.size() + 1);
    for (const ProcessRow& row : application.rows) {
        parts.push_back(row.percent.value_or(0) * scale);
    }
    parts.push_back(std::max(shown - sum, 0.0)); // of processes that have ended
    parts = tenthsOf(std::move(parts), shown);
    for (std::size_t i = 0; i < application.rows.size(); ++i) {
        application.rows[i].percent = application.rows[i].percent ? std::optional(parts[i]) : std::nullopt;
    }
}

} // namespace vantor
