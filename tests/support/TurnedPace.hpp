// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Pace.hpp"

namespace vantor::tests {

/// Time that passes only where somebody waits, and at once.
class TurnedPace {
public:
    [[nodiscard]] Pace pace() {
        return {.now = [this] { return m_now; },
                .wait =
                    [this](std::chrono::milliseconds time) {
                        m_now += time;
                        m_waited += time;
                    }};
    }
    void pass(std::chrono::milliseconds time) { m_now += time; }
    [[nodiscard]] std::chrono::milliseconds waited() const { return m_waited; }

private:
    Pace::Moment m_now{std::chrono::hours(1)};
    std::chrono::milliseconds m_waited{0};
};

} // namespace vantor::tests
