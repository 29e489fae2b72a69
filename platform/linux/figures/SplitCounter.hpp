// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace vantor::platform::linux {

/// A counter of 64 bits as the sum of counters of 32 bits, which is all that the platform's entries hold. A
/// single one of them falls each time its 32 bits wrap, on a link of 10 Gb/s every 3.4 seconds, and its
/// reader would take that for a negative rate. It begins where one counter of 32 bits would stand; from there
/// on the parts add up to all that passed, and their sum falls only where the counter itself does, or where
/// the parts would become too many.
class SplitCounter {
public:
    /// So many parts at most: 8 TiB, which 10 Gb/s take two hours for. Each costs its reader an entry.
    static constexpr std::size_t mostParts = 2048;

    void advance(std::uint64_t now) {
        if (!m_begun || now < m_base || now - m_base > mostParts * full) {
            m_base = now & ~full; // the low 32 bits are left
            m_begun = true;
        }
        m_sum = now - m_base;
    }
    [[nodiscard]] std::size_t parts() const { return m_sum == 0 ? 1 : (m_sum - 1) / full + 1; }
    /// The full ones come first; those past the last are 0.
    [[nodiscard]] std::uint32_t part(std::size_t index) const {
        return static_cast<std::uint32_t>(std::min(full, m_sum - std::min(m_sum, index * full)));
    }

private:
    static constexpr std::uint64_t full = 0xFFFFFFFF;
    std::uint64_t m_base = 0;
    std::uint64_t m_sum = 0;
    bool m_begun = false;
};

} // namespace vantor::platform::linux
