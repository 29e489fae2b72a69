// SPDX-License-Identifier: MIT
#include "platform/remote/BackOff.hpp"

#include <algorithm>
#include <random>

namespace vantor::platform::remote {

std::chrono::duration<double> scattered(std::chrono::duration<double> time) {
    static std::minstd_rand numbers{std::random_device()()};
    return time * std::uniform_real_distribution<double>(0.8, 1.2)(numbers);
}

std::chrono::duration<double> BackOff::next() {
    constexpr int steps = 6;
    constexpr int longest = 60; // seconds
    const int wait = std::min(longest, 1 << m_inVain);
    m_inVain = std::min(m_inVain + 1, steps);
    return scattered(std::chrono::seconds(wait));
}

} // namespace vantor::platform::remote
