// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/FleetHost.hpp"
#include "hosts/common/RemoteNode.hpp"
#include "hosts/common/Signals.hpp"
#include "hosts/terminal/Options.hpp"

namespace vantor::hosts::terminal {

/// The signals that concern a program on a terminal, to be handed to `runTerminal`.
class TerminalSignals final : public common::Signals {
public:
    TerminalSignals()
        : Signals({SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGTSTP, SIGCONT, SIGWINCH}, Again::taken) {}
};

/// Shows the widget on the terminal until the user ends it, of `node` where the machine in place is not this
/// one. The exit status. A signal that ends the program takes its default course after the terminal is put
/// back. Main thread; the loop is turned until the end.
[[nodiscard]] int runTerminal(const Options& options, const TerminalSignals& signals,
                              common::RemoteNode* node = nullptr);
/// The same for the wall of a fleet that is open, which must outlive the process's workers.
[[nodiscard]] int runTerminal(const Options& options, const TerminalSignals& signals,
                              common::FleetHost& fleet);

} // namespace vantor::hosts::terminal
