// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/RunLoop.hpp"

#include <memory>

namespace vantor::platform {

/// A timer on the main run loop. The loop keeps a scheduled timer alive, and the timer keeps what its action
/// holds. A late repeating timer skips the fires it missed and stays on its grid. Main thread only.
class NSTimer {
public:
    /// Schedules an action on the main loop, first after one interval; it always runs with what was current
    /// when it was scheduled. The interval is in seconds and is taken as it comes: less than a frame (1/60 s;
    /// so zero and negative too) waits one frame, the least a screen can show; not-a-number, infinity and
    /// anything above 504,911,232 s wait that long.
    static std::shared_ptr<NSTimer> scheduledTimerWithTimeInterval(double seconds, WorkItem action,
                                                                   bool repeats);

    /// The interval asked for, in seconds, unclamped.
    [[nodiscard]] double timeInterval() const { return m_asked; }
    /// True until the timer is invalidated or, without repeats, has fired.
    [[nodiscard]] bool isValid() const { return m_valid; }
    /// When it fires next.
    [[nodiscard]] Instant fireDate() const { return m_fire; }
    /// Takes it off the loop and lets its action go. May be called again.
    void invalidate();

    /// Use `scheduledTimerWithTimeInterval`; public for std::make_shared only.
    NSTimer(double seconds, WorkItem action, bool repeats, Instant now);

private:
    friend class RunLoop;
    void fire(Instant now);
    void restart(Instant now);

    double m_asked;
    Instant::duration m_interval;
    Instant m_fire;
    WorkItem m_action;
    bool m_repeats;
    bool m_valid = true;
};

} // namespace vantor::platform
