// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace vantor::platform::remote {

/// Somewhere within a fifth of a time, so that many do not ask at once. Main thread.
[[nodiscard]] std::chrono::duration<double> scattered(std::chrono::duration<double> time);

/// How long to leave a silent server alone: 1, 2, 4 … 60 seconds, each a fifth more or less. Main thread.
class BackOff {
public:
    [[nodiscard]] std::chrono::duration<double> next();
    void reset() { m_inVain = 0; }

private:
    int m_inVain = 0;
};

} // namespace vantor::platform::remote
