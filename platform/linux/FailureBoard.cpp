// SPDX-License-Identifier: MIT
#include "platform/linux/FailureBoard.hpp"

#include <utility>

namespace vantor::platform::linux {

namespace {
unsigned bitOf(Source source) {
    return 1U << static_cast<unsigned>(source);
}
} // namespace

void FailureBoard::fail(Source source, std::string reason) {
    const std::lock_guard lock(m_mutex);
    m_reasons[static_cast<std::size_t>(source)] = std::move(reason);
    m_failing |= bitOf(source);
}

void FailureBoard::clear(Source source) {
    if ((m_failing & bitOf(source)) == 0) {
        return;
    }
    const std::lock_guard lock(m_mutex);
    m_reasons[static_cast<std::size_t>(source)].reset();
    m_failing &= ~bitOf(source);
}

std::vector<SourceFailure> FailureBoard::list() const {
    std::vector<SourceFailure> failures;
    const std::lock_guard lock(m_mutex);
    for (const Source source : allSources) {
        if (const auto& reason = m_reasons[static_cast<std::size_t>(source)]) {
            failures.push_back({source, *reason});
        }
    }
    return failures;
}

} // namespace vantor::platform::linux
