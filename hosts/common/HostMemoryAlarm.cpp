// SPDX-License-Identifier: MIT
#include "hosts/common/HostMemoryAlarm.hpp"

#include "platform/linux/control/PressureTrigger.hpp"

namespace vantor::hosts::common {

HostMemoryAlarm::HostMemoryAlarm() : m_trigger(std::make_unique<platform::linux::PressureTrigger>()) {}

HostMemoryAlarm::~HostMemoryAlarm() = default;

int HostMemoryAlarm::number() const {
    return m_trigger->number();
}

bool HostMemoryAlarm::isRaised(std::chrono::steady_clock::time_point now) {
    if (!m_trigger->isShort()) {
        return false;
    }
    const bool isNew = isNewAlarm(m_last, now);
    m_last = now;
    return isNew;
}

bool isNewAlarm(std::optional<std::chrono::steady_clock::time_point> last,
                std::chrono::steady_clock::time_point now) {
    constexpr std::chrono::minutes calm{10};
    return !last || now - *last >= calm;
}

} // namespace vantor::hosts::common
