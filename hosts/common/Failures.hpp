// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Machine.hpp"

#include <vector>

namespace vantor::hosts::common {

/// What cannot be read at the moment, one entry a source: the current machine's, in the order of the
/// sections, then the current viewer's preferences.
[[nodiscard]] std::vector<platform::SourceFailure> currentFailures();

} // namespace vantor::hosts::common
