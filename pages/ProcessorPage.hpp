// SPDX-License-Identifier: MIT
#pragma once

#include "metrics/CpuStatus.hpp"
#include "platform/machine/Workload.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vantor {

/// How much processor time an application took of what the ring shows.
struct ProcessorShare {
    platform::ApplicationUse use;
    double percent = 0; ///< of all processors together, within the interval
    double cores = 0;   ///< the same as processors kept busy: 1.3
    double shown = 0;   ///< the percent in tenths, of a list that adds up as it is read
};

/// The processor page: what the widget's ring is made of. All processors together are 100 percent. The
/// applications and the others add up to the ring, as they are and as they are shown. The kernel counts both
/// by different clocks: the ring by what runs at each tick, applications by the time that they ran. Where the
/// applications' time is more than the ring, the ring is split among them by it.
struct ProcessorPage {
    CpuUsage usage;                 ///< of the interval; the ring shows what is not idle
    std::vector<double> processors; ///< the busy percent of each that was online all the time
    platform::ProcessorState state; ///< loads, frequency, temperature
    std::optional<platform::Pressure> pressure;
    std::vector<ProcessorShare> applications; ///< the busiest first, services last
    double others = 0;                        ///< percent that none of them took: the system and other users
    double othersShown = 0;                   ///< the same in tenths

    [[nodiscard]] double busy() const { return 100 - usage.idle; }
};

/// Takes two samples and tells what happened in between. Asks the current machine by the widget's own
/// sampler, and the current workload.
class ProcessorPageSampler {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;
    explicit ProcessorPageSampler(Clock clock = std::chrono::steady_clock::now);
    /// What is so already, before there is an interval: loads, pressure, frequency, temperature, and how many
    /// processors there are, none of them busy. The usage is not told, and nobody is listed.
    [[nodiscard]] ProcessorPage start() const;
    /// What happened since the last call, or since this was made; leave a second in between, since processes
    /// without a group of their own are counted in hundredths of a second.
    [[nodiscard]] ProcessorPage page();

private:
    struct Sample {
        std::vector<platform::ApplicationUse> applications;
        platform::ProcessorState state;
        std::chrono::steady_clock::time_point time;
    };
    [[nodiscard]] Sample take() const;

    Clock m_clock;
    Sample m_last;
};

} // namespace vantor
