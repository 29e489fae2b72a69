// SPDX-License-Identifier: MIT
#include "platform/remote/sources/PrometheusSource.hpp"

#include "platform/remote/sources/FleetRefresh.hpp"
#include "platform/remote/sources/PrometheusMachineWatch.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::remote {

PrometheusSource::PrometheusSource(const PrometheusOptions& options, Fetcher& fetcher)
    : m_options(options),
      m_fetcher(fetcher),
      m_refresh(std::make_shared<FleetRefresh>(options)),
      m_self(std::make_shared<PrometheusSource*>(this)) {}

PrometheusSource::~PrometheusSource() {
    *m_self = nullptr;
    pause();
}

void PrometheusSource::start() {
    if (std::exchange(m_isRunning, true) || m_isAsked) {
        return;
    }
    const Instant now = RunLoop::main().now();
    if (!m_due || *m_due <= now) {
        refresh();
        return;
    }
    m_timer = NSTimer::scheduledTimerWithTimeInterval(
        std::chrono::duration<double>(*m_due - now).count(), [this] { refresh(); }, false);
}

void PrometheusSource::pause() {
    m_isRunning = false;
    if (m_timer != nullptr) {
        m_timer->invalidate();
    }
}

void PrometheusSource::refresh() {
    m_begun = RunLoop::main().now();
    m_due.reset();
    m_refresh->begin(m_begun.time_since_epoch());
    ask();
}

void PrometheusSource::ask() {
    m_isAsked = true;
    m_fetcher.fetch(m_refresh->request(), [self = m_self, refresh = m_refresh](const FetchAnswer& answer) {
        refresh->take(answer);
        RunLoop::main().post([self] {
            if (*self != nullptr) {
                (*self)->take();
            }
        });
    });
}

/// The next question, or what has come of all of them. Nobody looks: the rest is not asked.
void PrometheusSource::take() {
    m_isAsked = false;
    if (!m_refresh->isDone()) {
        if (m_isRunning) {
            ask();
        }
        return;
    }
    m_snapshot = m_refresh->snapshot();
    // At most half of the time a server works for us.
    const Instant now = RunLoop::main().now();
    std::chrono::duration<double> wait = m_backOff.next();
    if (!m_refresh->isSilent()) {
        m_backOff.reset();
        const std::chrono::duration<double> passed = now - m_begun;
        wait = std::max(m_refresh->interval() - passed, passed);
    }
    m_due = now + std::chrono::duration_cast<Instant::duration>(wait);
    if (std::exchange(m_isRunning, false)) {
        start();
    }
    if (m_handler) {
        m_handler();
    }
}

std::unique_ptr<MachineWatch> PrometheusSource::watchOf(std::string_view key) const {
    const bool isKnown = m_snapshot != nullptr &&
                         std::ranges::any_of(m_snapshot->machines, [key](const FleetMachine& machine) {
                             return machine.key == key;
                         });
    return isKnown ? std::make_unique<PrometheusMachineWatch>(m_options, key, m_fetcher) : nullptr;
}

} // namespace vantor::platform::remote
