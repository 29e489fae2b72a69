// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Machine.hpp"

#include <vector>

namespace vantor::hosts::common {

/// What cannot be read at the moment, one entry a source: the current machine's, in the order of the
/// sections, then the preferences as the current viewer opened them last.
[[nodiscard]] std::vector<platform::SourceFailure> currentFailures();

} // namespace vantor::hosts::common
