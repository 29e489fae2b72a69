// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>

namespace vantor::platform::linux {
class PressureTrigger;
}

namespace vantor::hosts::common {

/// Tells once when memory gets short on this machine: not again before ten minutes have passed without that.
/// One thread at a time.
class HostMemoryAlarm {
public:
    HostMemoryAlarm();
    ~HostMemoryAlarm();
    HostMemoryAlarm(const HostMemoryAlarm&) = delete;
    HostMemoryAlarm& operator=(const HostMemoryAlarm&) = delete;

    /// To be waited for with POLLPRI before `isRaised` is asked; -1: ask every ten seconds instead.
    [[nodiscard]] int number() const;
    /// Whether the user is to be told now. Where there is a number, ask only when it has woken you.
    [[nodiscard]] bool isRaised(std::chrono::steady_clock::time_point now);

private:
    std::unique_ptr<platform::linux::PressureTrigger> m_trigger;
    std::optional<std::chrono::steady_clock::time_point> m_last;
};

/// Whether an alarm is a new one, and not still the one of `last`.
[[nodiscard]] bool isNewAlarm(std::optional<std::chrono::steady_clock::time_point> last,
                              std::chrono::steady_clock::time_point now);

} // namespace vantor::hosts::common
