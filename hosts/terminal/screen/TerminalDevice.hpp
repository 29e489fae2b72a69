// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/terminal/picture/Grid.hpp"
#include "platform/posix/Descriptor.hpp"

#include <string>
#include <string_view>

namespace vantor::hosts::terminal {

/// The terminal's device. It is opened once more under its name, so that it can be written to without
/// waiting: to set that on the descriptor that the shell gave us would change it for the shell as well. A
/// terminal that belongs to another user (after su) cannot be opened: then it is set for each write alone.
class TerminalDevice {
public:
    /// On the terminal that a descriptor, such as standard output, leads to.
    explicit TerminalDevice(int given);

    [[nodiscard]] int number() const { return m_own.number() >= 0 ? m_own.number() : m_given; }
    [[nodiscard]] Size size() const; ///< from the kernel, else LINES and COLUMNS, else 80x24

    /// Writes as much as the terminal takes now and keeps the rest. False when the terminal is gone.
    bool write(std::string_view bytes);
    bool flush() { return write({}); }
    /// Whether bytes wait for a terminal that takes none: one whose output was stopped with Ctrl-S.
    [[nodiscard]] bool isBlocked() const { return !m_waiting.empty(); }
    void dropWaiting() { m_waiting.clear(); }

    /// What the terminal has sent, at most 4 KiB of it, so that a flood of input leaves time for the rest.
    /// False at its end.
    bool read(std::string& bytes) const;

private:
    int m_given;
    platform::posix::Descriptor m_own;
    std::string m_waiting;
};

} // namespace vantor::hosts::terminal
