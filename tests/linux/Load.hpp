// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/HostStatistics.hpp"

namespace vantor::tests {

/// What an interval's counters make of the processors' time, in percent.
struct Load {
    double user, system, idle, nice;
};
inline Load loadBetween(const platform::host_cpu_load_info& a, const platform::host_cpu_load_info& b) {
    const double user = b.user - a.user, system = b.system - a.system, idle = b.idle - a.idle,
                 nice = b.nice - a.nice;
    const double percent = 100 / (user + system + idle + nice);
    return {user * percent, system * percent, idle * percent, nice * percent};
}

} // namespace vantor::tests
