// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/DispatchQueue.hpp"
#include "platform/time/RunLoop.hpp"

#include <algorithm>
#include <chrono>
#include <deque>
#include <utility>

namespace vantor::tests {

/// Stands in for the global queue: blocks wait until the test drains them, on the test's own thread.
class HandTurnedQueue final : public platform::DispatchQueue {
public:
    void async(platform::WorkItem block) override { m_blocks.push_back(std::move(block)); }

    [[nodiscard]] std::size_t waiting() const { return m_blocks.size(); }

    void drain() {
        while (!m_blocks.empty()) {
            const platform::WorkItem block = std::move(m_blocks.front());
            m_blocks.pop_front();
            block();
        }
    }

private:
    std::deque<platform::WorkItem> m_blocks;
    platform::Current<platform::DispatchQueue> m_scope{*this};
};

/// The main loop on a clock that only the test moves. Empties the loop at both ends.
class HandTurnedClock {
public:
    HandTurnedClock() {
        platform::RunLoop::main().clear();
        platform::RunLoop::main().setClock([this] { return m_now; });
    }
    ~HandTurnedClock() {
        platform::RunLoop::main().setClock({});
        platform::RunLoop::main().clear();
    }
    HandTurnedClock(const HandTurnedClock&) = delete;
    HandTurnedClock& operator=(const HandTurnedClock&) = delete;

    void advance(double seconds) {
        pass(seconds);
        platform::RunLoop::main().turn(m_now);
    }
    /// Time goes by and nobody turns the loop.
    void pass(double seconds) {
        m_now +=
            std::chrono::duration_cast<platform::Instant::duration>(std::chrono::duration<double>(seconds));
    }
    /// The same until an instant; nothing where that has been.
    void passTo(platform::Instant time) { m_now = std::max(m_now, time); }
    void turn() const { platform::RunLoop::main().turn(m_now); }
    [[nodiscard]] platform::Instant now() const { return m_now; }

private:
    platform::Instant m_now{std::chrono::hours(1)};
};

/// Both together: what a controller needs to be played through by hand. Declared after its machine, and
/// before the controller.
struct HandTurnedLoop {
    HandTurnedClock clock;
    HandTurnedQueue queue;

    /// Runs the sampling steps that wait, and then their display steps.
    void play() {
        queue.drain();
        clock.advance(0);
    }
    void advance(double seconds) {
        clock.advance(seconds);
        play();
    }
};

} // namespace vantor::tests
