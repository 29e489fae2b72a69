// SPDX-License-Identifier: MIT
#include "pages/ProcessorPage.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace vantor {

namespace {

using platform::ApplicationUse;
using platform::ProcessorTicks;

std::vector<double> shares(const std::vector<ProcessorTicks>& before,
                           const std::vector<ProcessorTicks>& now) {
    std::vector<double> percents;
    for (std::size_t i = 0; i < now.size() && before.size() == now.size(); ++i) {
        // Idle time may go backwards in the kernel.
        const auto grown = [](std::uint64_t old, std::uint64_t fresh) {
            return fresh > old ? static_cast<double>(fresh - old) : 0;
        };
        const double busy = grown(before[i].busy, now[i].busy);
        const double all = busy + grown(before[i].idle, now[i].idle);
        percents.push_back(all > 0 ? busy / all * 100 : 0);
    }
    return percents;
}

using Key = std::tuple<bool, std::string, std::string>;

Key keyOf(const ApplicationUse& use) {
    return {use.isService, use.id, use.name};
}

} // namespace

ProcessorPageSampler::ProcessorPageSampler(Clock clock) : m_clock(std::move(clock)) {
    (void)CpuStatus::getCpuUsage(); // what came before is not of this interval
    m_last = take();
}

ProcessorPageSampler::Sample ProcessorPageSampler::take() const {
    platform::Workload& workload = platform::currentWorkload();
    return {workload.applications(platform::ListedFor::processorTime), workload.processorState(), m_clock()};
}

ProcessorPage ProcessorPageSampler::page() {
    ProcessorPage page;
    Sample now = take();
    page.usage = CpuStatus::getCpuUsage();
    page.processors = shares(m_last.state.processors, now.state.processors);
    page.state = now.state;
    page.pressure = platform::currentWorkload().processorPressure();

    std::map<Key, std::uint64_t> before;
    for (const ApplicationUse& use : m_last.applications) {
        before[keyOf(use)] = use.processorTime;
    }
    const double elapsed = std::chrono::duration<double>(now.time - m_last.time).count();
    const double processors = static_cast<double>(std::max<std::size_t>(now.state.processors.size(), 1));
    double listed = 0;
    for (const ApplicationUse& use : now.applications) {
        const auto known = before.find(keyOf(use));
        // A new application began within the interval; one that lost a process may have fallen.
        const std::uint64_t start = known != before.end() ? std::min(known->second, use.processorTime) : 0;
        const double seconds = static_cast<double>(use.processorTime - start) / 1e6;
        const double cores = elapsed > 0 ? std::min(seconds / elapsed, processors) : 0;
        page.applications.push_back({use, cores / processors * 100, cores});
        listed += page.applications.back().percent;
    }
    std::ranges::sort(page.applications, [](const ProcessorShare& a, const ProcessorShare& b) {
        return std::tuple(a.use.isService, -a.percent, b.use.processorTime, a.use.name) <
               std::tuple(b.use.isService, -b.percent, a.use.processorTime, b.use.name);
    });
    page.others = std::max(page.busy() - listed, 0.0);
    m_last = std::move(now);
    return page;
}

} // namespace vantor
