// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>
#include <atomic>
#include <functional>

namespace vantor::hosts::qt {

/// Turns the main run loop inside the toolkit's event loop: when the next deadline has come, and when another
/// thread has posted. Stopped, nothing is turned and nothing wakes up.
class LoopDriver final : public QObject {
public:
    /// `turned` is called after each turn; `slept` instead of a turn when the machine has slept since the
    /// last one, so that timers can be set anew first.
    LoopDriver(std::function<void()> turned, std::function<void()> slept);
    ~LoopDriver() override;

    void start();
    void stop();
    [[nodiscard]] bool isRunning() const { return m_running; }

protected:
    bool event(QEvent* event) override;

private:
    void turn();
    [[nodiscard]] bool noticedSleep();

    std::function<void()> m_turned;
    std::function<void()> m_slept;
    QTimer m_deadline;
    std::atomic<bool> m_woken{false}; // an event is on its way
    double m_sleepTime = 0;           // seconds that the machine has slept since it started
    bool m_running = false;
};

} // namespace vantor::hosts::qt
