// SPDX-License-Identifier: MIT
#include "platform/time/NSTimer.hpp"

#include <cmath>
#include <utility>

namespace vantor::platform {

namespace {

Instant::duration waitFor(double seconds) {
    constexpr double frame = 1.0 / 60.0;
    constexpr double longest = 504'911'232.0; // sixteen years
    // Written so that a not-a-number, for which every comparison is false, takes the longest wait.
    const double wait = seconds < frame ? frame : seconds <= longest ? seconds : longest;
    return std::chrono::duration_cast<Instant::duration>(std::chrono::duration<double>(wait));
}

} // namespace

NSTimer::NSTimer(double seconds, WorkItem action, bool repeats, Instant now)
    : m_asked(seconds),
      m_interval(waitFor(seconds)),
      m_fire(now + m_interval),
      m_action(std::move(action)),
      m_repeats(repeats) {}

std::shared_ptr<NSTimer> NSTimer::scheduledTimerWithTimeInterval(double seconds, WorkItem action,
                                                                 bool repeats) {
    RunLoop& loop = RunLoop::main();
    auto timer = std::make_shared<NSTimer>(seconds, std::move(action), repeats, loop.now());
    loop.add(timer);
    return timer;
}

void NSTimer::invalidate() {
    m_valid = false;
    m_action = {};
}

void NSTimer::restart(Instant now) {
    m_fire = now + m_interval;
}

void NSTimer::fire(Instant now) {
    const WorkItem action = m_action; // the action may invalidate its own timer
    if (m_repeats) {
        m_fire += m_interval * ((now - m_fire) / m_interval + 1);
    } else {
        invalidate();
    }
    action();
}

} // namespace vantor::platform
