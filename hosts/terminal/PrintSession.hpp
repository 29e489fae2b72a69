// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/Options.hpp"

namespace vantor::hosts::terminal {

/// Prints one reading or one per interval on standard output. The exit status: 0, or 1 when the output could
/// not be written or a source could not be read, which is told on standard error. A reader that goes away
/// ends it quietly. Main thread; the loop is turned until the end.
[[nodiscard]] int printReadings(const Options& options);

} // namespace vantor::hosts::terminal
