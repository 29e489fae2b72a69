// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"

#include "hosts/common/StandardStreams.hpp"
#include "platform/foundation/NSUserDefaults.hpp"
#include "settings/SharedStore.hpp"

#include <algorithm>
#include <optional>
#include <utility>

namespace vantor::hosts::common {

using platform::Source;
using platform::SourceFailure;

void Complaints::tellStore() {
    (void)openSharedStore();
    if (std::optional<std::string> problem = platform::suiteProblem()) {
        m_told.push_back(Source::preferences);
        write({Source::preferences, std::move(*problem)});
    }
}

void Complaints::tell(const std::vector<SourceFailure>& failures) {
    std::vector<Source> failing;
    for (const SourceFailure& failure : failures) {
        failing.push_back(failure.source);
        if (std::ranges::find(m_told, failure.source) == m_told.end()) {
            write(failure);
        }
    }
    m_told = std::move(failing);
}

void Complaints::write(const SourceFailure& failure) const {
    complain(m_program, std::string(sourceName(failure.source)) + ": " + failure.reason);
}

} // namespace vantor::hosts::common
