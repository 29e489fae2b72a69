// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>

namespace vantor::tests {

/// The processor time that the work takes on this thread, whatever else the machine does meanwhile.
template<class Work>
double threadMilliseconds(Work work) {
    const auto now = [] {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
    };
    const double start = now();
    work();
    return now() - start;
}

} // namespace vantor::tests
