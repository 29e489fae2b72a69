// SPDX-License-Identifier: MIT
#include "hosts/qt/RingAnimator.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace vantor::hosts::qt {

namespace {

// Seconds. A usual change moves an end by one or two pixels in that; each frame more is another time that a
// sleeping processor is woken for a fifth of a millisecond.
constexpr double shortestFrame = 1.0 / 15;
constexpr double step = 1; // device pixels a frame

} // namespace

RingAnimator::RingAnimator(std::vector<RingView*> rings, Clock clock)
    : m_rings(std::move(rings)), m_clock(std::move(clock)) {
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.callOnTimeout(&m_timer, [this] { advance(); });
}

void RingAnimator::start() {
    if (!m_motion) {
        settle();
        return;
    }
    const platform::Instant now = m_clock();
    double fastest = 0;
    m_moving.clear();
    for (RingView* ring : m_rings) {
        const double speed = ring->speedAt(now);
        if (speed > 0) {
            ring->showAt(now);
            m_moving.push_back(ring);
            fastest = std::max(fastest, speed);
        } else {
            ring->showAtRest();
        }
    }
    if (m_moving.empty()) {
        m_timer.stop();
        return;
    }
    const std::chrono::duration<double> frame(std::max(shortestFrame, step / fastest));
    m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(frame));
}

void RingAnimator::setMotion(bool on) {
    m_motion = on;
    if (!on) {
        settle();
    }
}

void RingAnimator::settle() {
    m_timer.stop();
    for (RingView* ring : m_rings) {
        ring->showAtRest();
    }
}

void RingAnimator::advance() {
    const platform::Instant now = m_clock();
    std::erase_if(m_moving, [now](RingView* ring) { return !ring->moveOn(now); });
    if (m_moving.empty()) {
        m_timer.stop();
    }
}

} // namespace vantor::hosts::qt
