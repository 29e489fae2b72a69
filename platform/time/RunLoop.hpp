// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/WorkItem.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace vantor::platform {

class NSTimer;

/// An instant on the one monotonic clock that timers and animations share. It stands still while the machine
/// sleeps, so a resume brings no burst of timers.
using Instant = std::chrono::steady_clock::time_point;

/// The main thread's loop: the blocks of the main queue and the repeating timers. It never blocks and knows
/// no descriptor: a host asks for `nextDeadline`, waits with whatever its toolkit waits with, and calls
/// `turn`. Everything but `post` belongs to the main thread.
class RunLoop {
public:
    /// The process's main loop (`NSTimer` and the main queue work on it).
    static RunLoop& main();

    RunLoop() = default;
    RunLoop(const RunLoop&) = delete;
    RunLoop& operator=(const RunLoop&) = delete;

    /// During a turn its instant, which is one for all that happens in it. Between turns, where a host feeds
    /// its events in, the clock's, though never one before the last turn's. Timers and animations start here.
    [[nodiscard]] Instant now() const;

    /// What tells the instant between turns: the steady clock, until another is set; an empty function brings
    /// it back. For those who turn the loop on a time of their own.
    void setClock(std::function<Instant()> clock);

    /// Runs what is due at `now`: first the blocks posted before the turn, then each timer whose fire instant
    /// has come (once, however many fires it missed), then the blocks posted meanwhile by these. `now` never
    /// runs backwards: an earlier instant counts as the last one.
    void turn(Instant now);

    /// How late a host may serve a timer, so that timers which fall due together cost one wake-up.
    static constexpr std::chrono::milliseconds tolerance{10};

    /// When to call `turn` next: now when blocks are waiting, else when the earliest timer is due, else
    /// nothing (only a `post` can bring work). Timers that fall due within `late` after the earliest are
    /// waited for, so that one turn serves them all.
    [[nodiscard]] std::optional<Instant> nextDeadline(Instant::duration late = {}) const;

    /// Queues a block for the next turn and wakes the host; it runs with what is current here. Any thread.
    void post(WorkItem block);

    /// From here on posts of the calling thread do not wake the host; `endQuietPosts` does, once, if there
    /// were any. For a thread that posts several blocks in a row.
    static void beginQuietPosts();
    void endQuietPosts();

    /// Called after each `post` from the posting thread: writes to the host's wake descriptor. Set it before
    /// other threads post; an empty function takes it away.
    void setWakeHandler(std::function<void()> handler);

    /// Puts every timer's next fire one full interval after `now`, as if scheduled then: a host calls it when
    /// the widget comes back on screen, so that nothing that fell due meanwhile fires at once.
    void restartTimers(Instant now);

    /// The timers that are still scheduled.
    [[nodiscard]] std::vector<std::shared_ptr<NSTimer>> timers() const;

    /// Drops all timers and blocks (what they hold is released): the end of a process or of a test.
    void clear();

private:
    friend class NSTimer;
    void add(std::shared_ptr<NSTimer> timer);
    void runPosted();
    void fireDue();

    mutable std::mutex m_mutex; // guards m_posted and m_wake
    std::vector<WorkItem> m_posted;
    std::function<void()> m_wake;
    std::vector<std::shared_ptr<NSTimer>> m_timers;
    std::function<Instant()> m_clock;
    std::optional<Instant> m_now; // of the turn, or of the last one
    bool m_isTurning = false;
};

} // namespace vantor::platform
