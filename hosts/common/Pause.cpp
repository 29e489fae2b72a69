// SPDX-License-Identifier: MIT
#include "hosts/common/Pause.hpp"

#include "platform/posix/SleptTime.hpp"

#include <utility>

namespace vantor::hosts::common {

using platform::Instant;
using platform::RunLoop;

namespace {

/// What a second's traffic counts at most too much without being noticed: half of it.
constexpr std::chrono::milliseconds noticeable{500};

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
    return std::exchange(m_isAway, false) || m_slept - before > noticeable ||
           (due && now - *due > noticeable);
}

} // namespace vantor::hosts::common
