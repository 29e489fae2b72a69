// SPDX-License-Identifier: MIT
#include "hosts/widget/Readiness.hpp"

#include "controller/Sections.hpp"

#include <algorithm>

namespace vantor::hosts::widget {

constexpr double longEnough = 2.0; // seconds that the processor's share covers

Readiness::Readiness(TEReportTableViewController& controller) : m_controller(controller) {
    m_controller.setReportHandler(
        [this](platform::Source source) { m_shares += source == platform::Source::processor ? 1 : 0; });
    if (!(controller.refreshTime()->timeInterval() <= longEnough)) { // not a number waits longest
        m_second = platform::NSTimer::scheduledTimerWithTimeInterval(
            longEnough, [this] { m_controller.makeReports(); }, false);
    }
}

Readiness::~Readiness() {
    m_controller.setReportHandler({});
    if (m_second) {
        m_second->invalidate();
    }
}

bool Readiness::isReached() const {
    return m_shares > 1 && std::ranges::all_of(sections, [this](const Section& section) {
               return hasFigures(m_controller, section);
           });
}

} // namespace vantor::hosts::widget
