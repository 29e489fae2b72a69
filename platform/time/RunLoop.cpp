// SPDX-License-Identifier: MIT
#include "platform/time/RunLoop.hpp"

#include "platform/time/NSTimer.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform {

namespace {
thread_local bool postsQuietly = false;
thread_local bool owesWake = false;
} // namespace

RunLoop& RunLoop::main() {
    // Never destroyed: a worker may still post while the process ends.
    static RunLoop& loop = *new RunLoop;
    return loop;
}

Instant RunLoop::now() const {
    if (m_isTurning) {
        return *m_now;
    }
    const Instant clock = m_clock ? m_clock() : std::chrono::steady_clock::now();
    return m_now ? std::max(*m_now, clock) : clock;
}

void RunLoop::setClock(std::function<Instant()> clock) {
    m_clock = std::move(clock);
}

void RunLoop::turn(Instant now) {
    m_now = m_now ? std::max(*m_now, now) : now;
    m_isTurning = true;
    runPosted();
    fireDue();
    runPosted();
    m_isTurning = false;
}

void RunLoop::runPosted() {
    std::vector<WorkItem> blocks;
    {
        const std::scoped_lock lock(m_mutex);
        blocks.swap(m_posted);
    }
    for (WorkItem& block : blocks) {
        block();
        block = {}; // what it holds goes now, on the main thread and in order
    }
}

void RunLoop::fireDue() {
    const Instant now = *m_now;
    const auto isDue = [now](const auto& timer) { return timer->isValid() && timer->fireDate() <= now; };
    if (std::ranges::none_of(m_timers, isDue)) {
        return; // most turns are there for posted blocks
    }
    const std::vector<std::shared_ptr<NSTimer>> scheduled = m_timers; // an action may add and remove timers
    for (const std::shared_ptr<NSTimer>& timer : scheduled) {
        if (isDue(timer)) {
            timer->fire(now);
        }
    }
    std::erase_if(m_timers, [](const auto& timer) { return !timer->isValid(); });
}

std::optional<Instant> RunLoop::nextDeadline(Instant::duration late) const {
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_posted.empty()) {
            return now();
        }
    }
    std::optional<Instant> earliest;
    for (const std::shared_ptr<NSTimer>& timer : m_timers) {
        if (timer->isValid() && (!earliest || timer->fireDate() < *earliest)) {
            earliest = timer->fireDate();
        }
    }
    std::optional<Instant> latest = earliest;
    for (const std::shared_ptr<NSTimer>& timer : m_timers) {
        if (timer->isValid() && timer->fireDate() - *earliest <= late) {
            latest = std::max(*latest, timer->fireDate());
        }
    }
    return latest;
}

void RunLoop::post(WorkItem block) {
    const std::scoped_lock lock(m_mutex);
    m_posted.push_back(std::move(block));
    if (postsQuietly) {
        owesWake = true;
    } else if (m_wake) {
        m_wake(); // under the lock, so that a host which takes its handler away is not called afterwards
    }
}

void RunLoop::beginQuietPosts() {
    postsQuietly = true;
}

void RunLoop::endQuietPosts() {
    postsQuietly = false;
    if (std::exchange(owesWake, false)) {
        const std::scoped_lock lock(m_mutex);
        if (m_wake) {
            m_wake();
        }
    }
}

void RunLoop::setWakeHandler(std::function<void()> handler) {
    const std::scoped_lock lock(m_mutex);
    m_wake = std::move(handler);
}

void RunLoop::restartTimers(Instant now) {
    m_now = m_now ? std::max(*m_now, now) : now;
    for (const std::shared_ptr<NSTimer>& timer : m_timers) {
        timer->restart(*m_now);
    }
}

std::vector<std::shared_ptr<NSTimer>> RunLoop::timers() const {
    std::vector<std::shared_ptr<NSTimer>> valid;
    std::ranges::copy_if(m_timers, std::back_inserter(valid),
                         [](const auto& timer) { return timer->isValid(); });
    return valid;
}

void RunLoop::clear() {
    for (const std::shared_ptr<NSTimer>& timer : std::exchange(m_timers, {})) {
        timer->invalidate();
    }
    std::vector<WorkItem> blocks;
    {
        const std::scoped_lock lock(m_mutex);
        blocks.swap(m_posted);
    }
    m_now.reset();
}

void RunLoop::add(std::shared_ptr<NSTimer> timer) {
    m_timers.push_back(std::move(timer));
}

} // namespace vantor::platform
