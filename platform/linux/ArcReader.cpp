// SPDX-License-Identifier: MIT
#include "platform/linux/ArcReader.hpp"

namespace vantor::platform::linux {

std::optional<ArcStats> ArcReader::read(std::chrono::nanoseconds now) {
    constexpr std::chrono::minutes lookAgain{1};
    if (m_missed && now - *m_missed < lookAgain) {
        return std::nullopt;
    }
    const KernelFile::Content content = m_file.read();
    m_missed = content.error != 0 ? std::optional(now) : std::nullopt;
    return parseArcStats(content.text);
}

} // namespace vantor::platform::linux
