// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace vantor::tests {

/// Readings of something that must not grow while a program runs.
class Growth {
public:
    Growth() { m_readings.reserve(10'000); } // so that watching memory takes none

    void add(double reading) { m_readings.push_back(reading); }

    /// How far the line that fits best through the second half of the readings rises; the first half is for
    /// what fills up once.
    [[nodiscard]] double rise() const {
        const std::size_t first = m_readings.size() / 2;
        double count = 0, sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
        for (std::size_t i = first; i < m_readings.size(); ++i) {
            const auto x = static_cast<double>(i - first);
            const double y = m_readings[i] - m_readings[first];
            count += 1;
            sumX += x;
            sumY += y;
            sumXX += x * x;
            sumXY += x * y;
        }
        return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX) * (count - 1);
    }

private:
    std::vector<double> m_readings;
};

/// How many entries a folder of this process's has: "fd" for open descriptors, "task" for threads.
inline double countOwn(const char* folder) {
    double count = 0;
    for ([[maybe_unused]] const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path("/proc/self") / folder)) {
        ++count;
    }
    return count;
}

} // namespace vantor::tests
