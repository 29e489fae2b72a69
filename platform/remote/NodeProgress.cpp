// SPDX-License-Identifier: MIT
#include "platform/remote/NodeProgress.hpp"

#include "platform/posix/SleptTime.hpp"

#include <utility>

namespace vantor::platform::remote {

std::chrono::duration<double> NodeProgress::take(NodeTold told) {
    if (told.isFilterUnknown) {
        m_isFiltered = false;
        return {};
    }
    if (told.reading) {
        return takeReading(*std::move(told.reading));
    }
    m_state.problem = std::move(told.problem);
    if (!m_state.downSince) {
        m_state.downSince = std::chrono::system_clock::now();
    }
    return m_backOff.next();
}

std::chrono::duration<double> NodeProgress::takeReading(Reading reading) {
    constexpr std::chrono::milliseconds clocksApart{100};
    m_backOff.reset();
    m_state.problem.clear();
    m_state.downSince.reset();
    const std::chrono::nanoseconds slept = posix::sleptTime();
    const bool hasRates = m_last && slept - m_slept < clocksApart;
    if (hasRates) {
        m_state.figures = figuresBetween(*m_last, reading);
    }
    if (hasRates || !m_state.figures) {
        m_state.taken = reading.taken;
    }
    m_last = std::move(reading);
    m_last->volumes = {}; // differences need none
    m_slept = slept;
    return hasRates ? m_interval : secondQuestion;
}

} // namespace vantor::platform::remote
