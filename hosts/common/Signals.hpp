// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/EventDescriptor.hpp"

#include <chrono>
#include <csignal>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace vantor::hosts::common {

/// Signals as input for a host's loop instead of interruptions of it: a descriptor that can be read, and the
/// signals that came. One that was ignored when the program started stays ignored, as nohup(1) has it. What
/// was in place before is put back at the end. One at a time; main thread.
class Signals {
public:
    /// What becomes of a signal that comes a second time. By default it may end a program that is stuck.
    enum class Again : std::uint8_t { taken, actsByDefault };

    /// Throws std::system_error where the process has no descriptor left.
    Signals(std::initializer_list<int> numbers, Again again);
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    /// Can be read once a signal has come, until `take`.
    [[nodiscard]] int number() const { return m_event.number(); }
    /// The signals that have come since the last call, each once, by rising number.
    [[nodiscard]] std::vector<int> take() const;
    /// Takes one signal, which may take a while to come; false when it has not come within `patience`. The
    /// others stay.
    bool await(int signal, std::chrono::milliseconds patience) const;
    /// Does what a signal does by default: ends the process, or stops it until it is continued.
    static void actOn(int signal);

private:
    struct Before {
        int signal;
        struct sigaction action;
    };
    platform::posix::EventDescriptor m_event;
    std::vector<Before> m_before;
};

} // namespace vantor::hosts::common
