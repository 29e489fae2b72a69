// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

namespace vantor::platform::posix {

/// A descriptor (eventfd(2)) that a host's loop waits on to learn that another thread has something for it:
/// hand `wake` to the run loop's wake handler and call `drain` when the descriptor can be read.
class EventDescriptor {
public:
    /// Throws std::system_error where the process has no descriptor left.
    EventDescriptor();

    /// Can be read from the first `wake` until `drain`.
    [[nodiscard]] int number() const { return m_descriptor.number(); }
    /// Any thread, and a signal handler.
    void wake() const noexcept;
    /// Takes all wakes so far; true if there were any.
    bool drain() const noexcept;

private:
    Descriptor m_descriptor;
};

} // namespace vantor::platform::posix
