// SPDX-License-Identifier: MIT
#include "hosts/widget/MemoryWarning.hpp"

#include <chrono>
#include <utility>

namespace vantor::hosts::widget {

MemoryWarning::MemoryWarning(std::function<void()> raised) : m_raised(std::move(raised)) {
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
    wait();
}

void MemoryWarning::wait() {
    constexpr std::chrono::seconds pause{10};
    if (m_alarm.number() < 0) {
        m_notifier.reset();
        m_timer.start(pause);
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_alarm.number(), QSocketNotifier::Exception);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_timer, [this] { look(); });
}

void MemoryWarning::look() {
    if (m_alarm.isRaised(std::chrono::steady_clock::now())) {
        m_raised();
    }
    if (m_notifier && m_alarm.number() < 0) { // the kernel has stopped watching
        m_notifier.release()->deleteLater();  // it is the one that called
        wait();
    }
}

} // namespace vantor::hosts::widget
