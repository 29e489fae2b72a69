// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/qt/RingView.hpp"

#include <QTimer>
#include <chrono>
#include <functional>
#include <vector>

namespace vantor::hosts::qt {

/// Moves all rings with one timer. A frame comes when the fastest ring's end has a device pixel to go,
/// never more often than fifteen times a second, and not at all where there is nothing to see: at rest, off
/// screen or with motion switched off.
class RingAnimator {
public:
    using Clock = std::function<platform::Instant()>;

    explicit RingAnimator(std::vector<RingView*> rings, Clock clock = std::chrono::steady_clock::now);

    /// A chart changed: shows its new figures at once and sets the ring moving.
    void start();
    /// Off: rings jump to their new place.
    void setMotion(bool on);
    [[nodiscard]] bool hasMotion() const { return m_motion; }
    /// Ends all motion where it leads.
    void settle();

    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }
    /// How long until the next frame; only while it runs.
    [[nodiscard]] std::chrono::milliseconds interval() const { return m_timer.intervalAsDuration(); }

private:
    void advance();

    std::vector<RingView*> m_rings;
    std::vector<RingView*> m_moving;
    Clock m_clock;
    QTimer m_timer;
    bool m_motion = true;
};

} // namespace vantor::hosts::qt
