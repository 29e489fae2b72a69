// SPDX-License-Identifier: MIT
#include "pages/ProcessorPage.hpp"

#include "pages/Shares.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace vantor {

namespace {

using platform::ApplicationUse;
using platform::ProcessorTicks;

std::vector<double> busyOf(const std::vector<ProcessorTicks>& before,
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

/// Has the applications, the others and what is shown of them add up to the ring.
void addUp(ProcessorPage& page) {
    double listed = 0;
    for (const ProcessorShare& share : page.applications) {
        listed += share.percent;
    }
    const double scale = scaleWithin(page.busy(), listed);
    std::vector<double> parts;
    parts.reserve(page.applications.size() + 1);
    for (ProcessorShare& share : page.applications) {
        share.percent *= scale;
        share.cores *= scale;
        parts.push_back(share.percent);
    }
    page.others = std::max(page.busy() - listed, 0.0);
    parts.push_back(page.others);
    const std::vector<double> shown = tenthsOf(std::move(parts), page.busy());
    for (std::size_t i = 0; i < page.applications.size(); ++i) {
        page.applications[i].shown = shown[i];
    }
    page.othersShown = shown.back();
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

ProcessorPage ProcessorPageSampler::start() const {
    ProcessorPage page;
    page.processors.assign(m_last.state.processors.size(), 0);
    page.state = m_last.state;
    page.pressure = platform::currentWorkload().processorPressure();
    return page;
}

ProcessorPage ProcessorPageSampler::page() {
    ProcessorPage page;
    Sample now = take();
    page.usage = CpuStatus::getCpuUsage();
    page.processors = busyOf(m_last.state.processors, now.state.processors);
    page.state = now.state;
    page.pressure = platform::currentWorkload().processorPressure();

    std::map<Key, std::uint64_t> before;
    for (const ApplicationUse& use : m_last.applications) {
        before[keyOf(use)] = use.processorTime;
    }
    const double elapsed = std::chrono::duration<double>(now.time - m_last.time).count();
    const double processors = static_cast<double>(std::max<std::size_t>(now.state.processors.size(), 1));
    for (const ApplicationUse& use : now.applications) {
        const auto known = before.find(keyOf(use));
        // A new application began within the interval; one that lost a process may have fallen.
        const std::uint64_t start = known != before.end() ? std::min(known->second, use.processorTime) : 0;
        const double seconds = static_cast<double>(use.processorTime - start) / 1e6;
        const double cores = elapsed > 0 ? std::min(seconds / elapsed, processors) : 0;
        page.applications.push_back({use, cores / processors * 100, cores, 0});
    }
    std::ranges::sort(page.applications, [](const ProcessorShare& a, const ProcessorShare& b) {
        return std::tuple(a.use.isService, -a.percent, b.use.processorTime, a.use.name) <
               std::tuple(b.use.isService, -b.percent, a.use.processorTime, b.use.name);
    });
    addUp(page);
    m_last = std::move(now);
    return page;
}

} // namespace vantor
