// SPDX-License-Identifier: MIT
#include "hosts/qt/LoopDriver.hpp"

#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <chrono>
#include <utility>

namespace vantor::hosts::qt {

using platform::Instant;
using platform::RunLoop;

namespace {

constexpr auto wakeEvent = static_cast<QEvent::Type>(QEvent::User + 1);

} // namespace

LoopDriver::LoopDriver(std::function<void(Instant)> turn, Clock clock)
    : m_turn(std::move(turn)), m_clock(std::move(clock)) {
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    m_deadline.callOnTimeout(this, [this] { this->turn(); });
}

LoopDriver::~LoopDriver() {
    stop();
}

void LoopDriver::start() {
    if (std::exchange(m_running, true)) {
        return;
    }
    RunLoop::main().setWakeHandler([this] {
        if (!m_woken.exchange(true)) {
            QCoreApplication::postEvent(this, new QEvent(wakeEvent));
        }
    });
    turn();
}

void LoopDriver::stop() {
    m_running = false;
    RunLoop::main().setWakeHandler({});
    m_deadline.stop();
}

bool LoopDriver::event(QEvent* event) {
    if (event->type() != wakeEvent) {
        return QObject::event(event);
    }
    turn();
    return true;
}

void LoopDriver::turn() {
    if (!m_running) {
        return;
    }
    m_woken = false; // first: what is posted from now on may miss this turn
    m_turn(m_clock());
    if (!m_running) {
        return;
    }
    if (const std::optional<Instant> next = RunLoop::main().nextDeadline(RunLoop::tolerance)) {
        const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*next - m_clock());
        // The toolkit's timers count milliseconds in an int: a longer wait is taken in pieces.
        m_deadline.start(
            std::clamp(wait, std::chrono::milliseconds(0), std::chrono::milliseconds(1'000'000'000)));
    } else {
        m_deadline.stop();
    }
}

} // namespace vantor::hosts::qt
