// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/HostMemoryAlarm.hpp"

#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>

namespace vantor::hosts::widget {

/// Waits for memory to get short on this machine, also while the widget itself rests: it costs nothing where
/// the kernel watches, else a look every ten seconds. Main thread.
class MemoryWarning {
public:
    /// `raised` is called once, and not again before it was calm for a while.
    explicit MemoryWarning(std::function<void()> raised);

private:
    void look();
    void wait();

    common::HostMemoryAlarm m_alarm;
    std::function<void()> m_raised;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer m_timer;
};

} // namespace vantor::hosts::widget
