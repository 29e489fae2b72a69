// SPDX-License-Identifier: MIT
#include "pages/ApplicationProcesses.hpp"

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

} // namespace vantor
