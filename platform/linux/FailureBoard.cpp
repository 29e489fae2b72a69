// SPDX-License-Identifier: MIT
#include "platform/linux/FailureBoard.hpp"

#include <utility>

namespace vantor::platform::linux_machine {

void FailureBoard::fail(Source source, std::string reason) {
    const std::lock_guard lock(m_mutex);
    m_reasons[static_cast<std::size_t>(source)] = std::move(reason);
}

void FailureBoard::clear(Source source) {
    const std::lock_guard lock(m_mutex);
    m_reasons[static_cast<std::size_t>(source)].reset();
}

std::vector<SourceFailure> FailureBoard::list() const {
    static constexpr std::array<const char*, count> names{"memory", "storage", "processor", "network",
                                                          "preferences"};
    std::vector<SourceFailure> failures;
    const std::lock_guard lock(m_mutex);
    for (std::size_t i = 0; i < count; ++i) {
        if (m_reasons[i]) {
            failures.push_back({names[i], *m_reasons[i]});
        }
    }
    return failures;
}

} // namespace vantor::platform::linux_machine
