// SPDX-License-Identifier: MIT
#include "hosts/qt/LoopDriver.hpp"

#include "platform/posix/SleptTime.hpp"
#include "platform/time/RunLoop.hpp"

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
constexpr double noticeableSleep = 0.5; // seconds

double sleepTime() {
    return std::chrono::duration<double>(platform::posix::sleptTime()).count();
}

} // namespace

LoopDriver::LoopDriver(std::function<void()> turned, std::function<void()> slept)
    : m_turned(std::move(turned)), m_slept(std::move(slept)) {
    m_deadline.setSingleShot(true);
    m_deadline.setTimerType(Qt::PreciseTimer);
    m_deadline.callOnTimeout(this, [this] { turn(); });
}

LoopDriver::~LoopDriver() {
    stop();
}

void LoopDriver::start() {
    if (std::exchange(m_running, true)) {
        return;
    }
    m_sleepTime = sleepTime();
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

bool LoopDriver::noticedSleep() {
    const double before = std::exchange(m_sleepTime, sleepTime());
    return m_sleepTime - before > noticeableSleep;
}

void LoopDriver::turn() {
    if (!m_running) {
        return;
    }
    m_woken = false; // first: what is posted from now on may miss this turn
    if (noticedSleep()) {
        m_slept();
    }
    RunLoop& loop = RunLoop::main();
    loop.turn(std::chrono::steady_clock::now());
    m_turned();
    if (const std::optional<Instant> next = loop.nextDeadline()) {
        const auto wait =
            std::chrono::ceil<std::chrono::milliseconds>(*next - std::chrono::steady_clock::now());
        // The toolkit's timers count milliseconds in an int: a longer wait is taken in pieces.
        m_deadline.start(
            std::clamp(wait, std::chrono::milliseconds(0), std::chrono::milliseconds(1'000'000'000)));
    } else {
        m_deadline.stop();
    }
}

} // namespace vantor::hosts::qt
