// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Workload.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace vantor {

/// A process behind an application, as a row.
struct ProcessRow {
    platform::ProcessUse use;
    /// Of all processors together, since it was looked at last; absent at the first look.
    std::optional<double> percent;
};

/// What is behind an application's row when it is unfolded.
struct ApplicationProcesses {
    std::vector<ProcessRow> rows;      ///< those that hold most memory first
    std::optional<std::uint64_t> peak; ///< the most bytes that the application held, with cache, if known
};

/// Looks behind applications again and again, by the current workload. One thread at a time.
class ProcessSampler {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;
    explicit ProcessSampler(Clock clock = std::chrono::steady_clock::now) : m_clock(std::move(clock)) {}

    /// What is behind each, in their order. A process has a share where it was looked at the last time too.
    /// `processors`: how many there are.
    [[nodiscard]] std::vector<ApplicationProcesses>
    look(const std::vector<platform::ApplicationUse>& applications, std::size_t processors);

private:
    using Key = std::pair<int, std::uint64_t>; ///< number and start
    Clock m_clock;
    std::chrono::steady_clock::time_point m_time;
    std::map<Key, std::uint64_t> m_used; ///< microseconds at that time
};

/// Has the processes' percents be no more than their application's, which may be counted by another clock,
/// and rounds them to tenths that say so too. `shown`: the application's percent in tenths.
void fitWithin(double shown, ApplicationProcesses& application);

} // namespace vantor
