// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/Options.hpp"
#include "hosts/terminal/screen/Signals.hpp"

namespace vantor::hosts::terminal {

/// Shows the widget on the terminal until the user ends it. The exit status. A signal that ends the program
/// takes its default course after the terminal is put back. Main thread; the loop is turned until the end.
[[nodiscard]] int runTerminal(const Options& options, const Signals& signals);

} // namespace vantor::hosts::terminal
