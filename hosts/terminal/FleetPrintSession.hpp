// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"
#include "hosts/terminal/Options.hpp"

namespace vantor::hosts::terminal {

/// Prints one report of many machines, or one per interval. The first waits until each machine has answered
/// or failed to, for half a minute at most. The exit status: 0, or 1 where the last report named silent
/// machines or sources, which is told on standard error, each once until it has answered in between, or where
/// the output could not be written. A reader that goes away ends it quietly. The fleet is open. Main thread;
/// the loop is turned until the end.
[[nodiscard]] int printFleet(const Options& options, const common::FleetChoice& choice,
                             common::FleetHost& fleet);

} // namespace vantor::hosts::terminal
