// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/BackOff.hpp"
#include "platform/remote/MachineWatch.hpp"
#include "platform/remote/NodeQuestion.hpp"

#include <chrono>
#include <optional>

namespace vantor::platform::remote {

/// What one exporter's answers come to, one after the other, and when to ask it next: twice a second apart,
/// so that there are rates, then at an interval; in vain after 1, 2, 4 … 60 seconds; at once without the
/// filter where the exporter does not know it. No rate covers a time that this machine slept through, since
/// the clock stood still meanwhile. Main thread.
class NodeProgress {
public:
    static constexpr std::chrono::milliseconds secondQuestion{1000};
    static constexpr std::chrono::milliseconds usualInterval{5000};

    NodeProgress(std::chrono::milliseconds interval, bool mayFilter)
        : m_interval(interval), m_isFiltered(mayFilter) {}

    /// Takes an answer up; how long to wait before the next question.
    [[nodiscard]] std::chrono::duration<double> take(NodeTold told);
    /// Nothing is asked for a while: what comes then begins anew.
    void forgetReading() { m_last.reset(); }

    [[nodiscard]] bool isFiltered() const { return m_isFiltered; }
    [[nodiscard]] const NodeState& state() const { return m_state; }

private:
    [[nodiscard]] std::chrono::duration<double> takeReading(Reading reading);

    std::chrono::milliseconds m_interval;
    bool m_isFiltered; ///< only the collectors that are needed are asked for
    NodeState m_state;
    std::optional<Reading> m_last;
    std::chrono::nanoseconds m_slept{}; ///< until that reading
    BackOff m_backOff;
};

} // namespace vantor::platform::remote
