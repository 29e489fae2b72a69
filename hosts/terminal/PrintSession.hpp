// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/RemoteNode.hpp"
#include "hosts/terminal/Options.hpp"

namespace vantor::hosts::terminal {

/// Prints one reading or one per interval on standard output. The exit status: 0, or 1 when the output could
/// not be written or a source could not be read, which is told on standard error. A reader that goes away
/// ends it quietly. `node` is the machine in place where it is not this one. Main thread; the loop is turned
/// until the end.
[[nodiscard]] int printReadings(const Options& options, const common::RemoteNode* node = nullptr);

} // namespace vantor::hosts::terminal
