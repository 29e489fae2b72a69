// SPDX-License-Identifier: MIT
#pragma once

#include "platform/time/RunLoop.hpp"

#include <QObject>
#include <QTimer>
#include <atomic>
#include <functional>

namespace vantor::hosts::qt {

/// Has the main run loop turned inside the toolkit's event loop: when its next deadline has come, and when
/// another thread has posted. While it is stopped, nothing
/// is turned and nothing wakes up.
class LoopDriver final : public QObject {
public:
    using Clock = std::function<platform::Instant()>;

    /// `turn` is called with the clock's instant, and is to turn the loop at it.
    LoopDriver(std::function<void(platform::Instant)> turn, Clock clock);
    ~LoopDriver() override;

    void start();
    void stop();
    [[nodiscard]] bool isRunning() const { return m_running; }

protected:
    bool event(QEvent* event) override;

private:
    void turn();

    std::function<void(platform::Instant)> m_turn;
    Clock m_clock;
    QTimer m_deadline;
    std::atomic<bool> m_woken{false}; // an event is on its way
    bool m_running = false;
};

} // namespace vantor::hosts::qt
