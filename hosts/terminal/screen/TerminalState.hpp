// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::hosts::terminal {

/// The terminal's line settings and modes, changed while a picture is on it and put back afterwards, whatever
/// happens: at the end, before a stop, when the program fails in any thread. One at a time.
class TerminalState {
public:
    /// `enter` and `leave` are the bytes that switch the terminal's modes and back.
    TerminalState(int descriptor, std::string enter, std::string leave);
    ~TerminalState();
    TerminalState(const TerminalState&) = delete;
    TerminalState& operator=(const TerminalState&) = delete;

    /// Notes the line settings and takes over: keys come one by one and unseen, Ctrl-C and Ctrl-Z still act.
    /// Harmless when repeated. False where the descriptor is no terminal.
    bool enter();
    /// Puts everything back. Harmless when repeated; async-signal-safe.
    void leave() const noexcept;

private:
    const int m_descriptor;
    const std::string m_enter;
};

} // namespace vantor::hosts::terminal
