// SPDX-License-Identifier: MIT
#pragma once

#include "controller/TEReportTableViewController.hpp"
#include "platform/time/RunLoop.hpp"

#include <chrono>

/// Pauses of the widget: nobody looked, the machine slept, the process was stopped or could not write.
namespace vantor::hosts::common {

/// Takes the widget up again after a pause, the same in every host: the last picture stands until fresh
/// figures come, no timer fires at once for what it missed, and no rate or share covers the pause. `now` is
/// the instant of the turn that follows. Main thread.
void resumeWidget(TEReportTableViewController& controller, platform::Instant now);

/// Notices pauses, also those that nobody announced.
class PauseWatch {
public:
    PauseWatch();

    /// The widget leaves the screen: the next turn comes after a pause, however short.
    void begin() { m_isAway = true; }
    /// Whether the main loop comes back from a pause: one that had begun, or the machine slept since the last
    /// call, or the loop ought to have been turned half a second before `now`. Call it before each turn.
    [[nodiscard]] bool isOver(platform::Instant now);

private:
    std::chrono::nanoseconds m_slept; // since the machine was started
    bool m_isAway = false;
};

} // namespace vantor::hosts::common
