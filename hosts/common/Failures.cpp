// SPDX-License-Identifier: MIT
#include "hosts/common/Failures.hpp"

#include "platform/foundation/NSUserDefaults.hpp"

#include <utility>

namespace vantor::hosts::common {

std::vector<platform::SourceFailure> currentFailures() {
    std::vector<platform::SourceFailure> failures = platform::currentMachine().failures();
    if (std::optional<std::string> reason = platform::suiteProblem()) {
        failures.push_back({platform::Source::preferences, *std::move(reason)});
    }
    return failures;
}

} // namespace vantor::hosts::common
