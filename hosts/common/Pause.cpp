// SPDX-License-Identifier: MIT
#include "hosts/common/Pause.hpp"

#include "platform/posix/SleptTime.hpp"

#include <utility>

namespace vantor::hosts::common {

using platform::Instant;
using platform::RunLoop;

namespace {

constexpr std::chrono::milliseconds noticeableSleep{500};
constexpr std::chrono::milliseconds noticeableDelay{1500}; // more than the second between two turns

} // namespace

void resumeWidget(TEReportTableViewController& controller, Instant now) {
    controller.resumeReports();
    RunLoop::main().restartTimers(now); // the one that it has just set as well
    controller.widgetPerformUpdateWithCompletionHandler([](platform::NCUpdateResult) {});
}

PauseWatch::PauseWatch() : m_slept(platform::posix::sleptTime()) {}

bool PauseWatch::isOver(Instant now) {
    const std::chrono::nanoseconds before = std::exchange(m_slept, platform::posix::sleptTime());
    const std::optional<Instant> due = RunLoop::main().nextDeadline();
    return std::exchange(m_isAway, false) || m_slept - before > noticeableSleep ||
           (due && now - *due > noticeableDelay);
}

} // namespace vantor::hosts::common
