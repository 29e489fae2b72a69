// SPDX-License-Identifier: MIT
#include "hosts/common/Complaints.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSUserDefaults.hpp"
#include "settings/SharedStore.hpp"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

namespace vantor::hosts {

using platform::SourceFailure;

void Complaints::tellStore() {
    if (std::optional<std::string> problem = platform::suiteProblem(sharedSuiteName)) {
        m_told.push_back({"preferences", std::move(*problem)});
        write(m_told.back());
    }
}

void Complaints::tell(const std::vector<SourceFailure>& failures) {
    std::vector<SourceFailure> told;
    for (const SourceFailure& failure : failures) {
        // A path may be long, and its end is what tells files apart.
        told.push_back({failure.source, platform::printableText(failure.reason, 4096)});
        if (std::ranges::find(m_told, told.back()) == m_told.end()) {
            write(told.back());
        }
    }
    m_told = std::move(told);
}

void Complaints::write(const SourceFailure& failure) const {
    std::fprintf(stderr, "%s: %s: %s\n", m_program.c_str(), failure.source.c_str(), failure.reason.c_str());
}

} // namespace vantor::hosts
