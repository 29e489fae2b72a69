// SPDX-License-Identifier: MIT
#include "hosts/common/HeadlessLoop.hpp"

#include "hosts/common/Pause.hpp"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

namespace vantor::hosts::common {

using platform::Instant;
using platform::RunLoop;

namespace {

Instant::duration seconds(double count) {
    return std::chrono::duration_cast<Instant::duration>(std::chrono::duration<double>(count));
}

/// What the posting threads wake. Shared with the handler: a worker may still be inside it when the wait is
/// over.
struct Alarm {
    std::mutex mutex;
    std::condition_variable changed;
    bool rung = false;

    void ring() {
        const std::scoped_lock lock(mutex);
        rung = true;
        changed.notify_one();
    }
    void waitUntil(Instant end) {
        std::unique_lock lock(mutex);
        changed.wait_until(lock, end, [this] { return rung; });
        rung = false;
    }
};

} // namespace

bool turnUntil(const std::function<bool()>& done, double atMost,
               const std::function<void(Instant now)>& resumed) {
    const auto alarm = std::make_shared<Alarm>();
    RunLoop& loop = RunLoop::main();
    loop.setWakeHandler([alarm] { alarm->ring(); });
    PauseWatch pauses;
    Instant last = std::chrono::steady_clock::now();
    Instant end = last + seconds(atMost);
    bool satisfied = false;
    for (;;) {
        const Instant now = std::chrono::steady_clock::now();
        if (pauses.isOver(now)) {
            end += now - last;
            if (resumed) {
                resumed(now);
            }
        }
        last = now;
        loop.turn(now);
        satisfied = done();
        if (satisfied || now >= end) {
            break;
        }
        alarm->waitUntil(std::min(loop.nextDeadline(RunLoop::tolerance).value_or(end), end));
    }
    loop.setWakeHandler({});
    return satisfied;
}

VirtualTime::VirtualTime() {
    RunLoop::main().setClock([this] { return m_now; });
}

VirtualTime::~VirtualTime() {
    RunLoop::main().setClock({});
}

void VirtualTime::sample() {
    while (!m_blocks.empty()) {
        const platform::WorkItem block = std::move(m_blocks.front());
        m_blocks.pop_front();
        block();
    }
}

bool VirtualTime::turnUntil(const std::function<bool()>& done, double atMost) {
    RunLoop& loop = RunLoop::main();
    m_now = std::max(m_now, loop.now());
    const Instant end = m_now + seconds(atMost);
    for (;;) {
        loop.turn(m_now);
        sample();
        loop.turn(m_now);
        if (done()) {
            return true;
        }
        const Instant next = loop.nextDeadline().value_or(end);
        if (next > end) {
            return false;
        }
        m_now = next;
    }
}

} // namespace vantor::hosts::common
