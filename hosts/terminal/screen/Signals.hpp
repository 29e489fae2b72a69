// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelFile.hpp"

#include <vector>

namespace vantor::hosts::terminal {

/// The signals that concern a terminal's program (INT, QUIT, TERM, HUP, TSTP, CONT, WINCH, CHLD), taken as
/// input instead of as interruptions: signalfd(2). Make it before other threads start, which inherit the
/// mask.
class Signals {
public:
    Signals();
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    [[nodiscard]] int number() const { return m_descriptor.number(); }
    /// The signals that have come since the last call.
    [[nodiscard]] std::vector<int> take() const;
    /// Does what a signal does by default: stops the process until it is continued, or ends it.
    static void actOn(int signal);

private:
    platform::posix::Descriptor m_descriptor;
};

} // namespace vantor::hosts::terminal
