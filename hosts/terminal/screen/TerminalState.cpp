// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/TerminalState.hpp"

#include "platform/core/FatalStop.hpp"
#include "platform/posix/WithoutWaiting.hpp"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>

namespace vantor::hosts::terminal {

namespace {

/// What a failing program needs to put the terminal back with write(2) and tcsetattr(3) alone. Plain memory,
/// since the heap may be what broke.
struct Restoration {
    std::atomic<bool> isDue{false};
    int descriptor = -1;
    termios settings{};
    std::array<char, 512> bytes{};
    std::size_t count = 0;
};
Restoration restoration;

constexpr std::array<int, 5> failures{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

/// Waits for a terminal that takes its bytes slowly, a while each time. One that takes none at all, such as a
/// window that was frozen, has those thrown away that it did not read yet: they were a picture that goes.
bool waitToWrite(int descriptor, bool mayDiscard) noexcept {
    constexpr int patience = 400; // milliseconds
    pollfd terminal{descriptor, POLLOUT, 0};
    if (::poll(&terminal, 1, patience) > 0) {
        return true;
    }
    return mayDiscard && ::tcflush(descriptor, TCOFLUSH) == 0 && ::poll(&terminal, 1, patience) > 0;
}

/// Async-signal-safe.
void writeAll(int descriptor, const char* bytes, std::size_t count) noexcept {
    const platform::posix::WithoutWaiting withoutWaiting(descriptor);
    bool mayDiscard = true;
    while (count > 0) {
        const ::ssize_t written = ::write(descriptor, bytes, count);
        if (written > 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        } else if (errno == EAGAIN) {
            if (!waitToWrite(descriptor, mayDiscard)) {
                return;
            }
            mayDiscard = false;
        } else if (errno != EINTR) {
            return; // a terminal that is gone
        }
    }
}

void restore() noexcept {
    if (!restoration.isDue.exchange(false)) {
        return;
    }
    // Output that was stopped with Ctrl-S would hold the bytes up: without that key's meaning it runs again.
    termios flowing = restoration.settings;
    flowing.c_iflag &= ~static_cast<tcflag_t>(IXON);
    ::tcsetattr(restoration.descriptor, TCSANOW, &flowing);
    writeAll(restoration.descriptor, restoration.bytes.data(), restoration.count);
    ::tcsetattr(restoration.descriptor, TCSANOW, &restoration.settings);
}

/// For a failure that no fatal stop announces. The default action follows, since the handler is taken away.
extern "C" void restoreAndFail(int signal) {
    restore();
    ::raise(signal);
}

void watchForFailures(bool on) {
    struct sigaction action {};
    action.sa_handler = on ? restoreAndFail : SIG_DFL;
    action.sa_flags = on ? static_cast<int>(SA_RESETHAND | SA_NODEFER) : 0;
    ::sigemptyset(&action.sa_mask);
    for (const int signal : failures) {
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace

TerminalState::TerminalState(int descriptor, std::string enter, std::string leave)
    : m_descriptor(descriptor), m_enter(std::move(enter)) {
    restoration.descriptor = descriptor;
    restoration.count = std::min(leave.size(), restoration.bytes.size());
    std::memcpy(restoration.bytes.data(), leave.data(), restoration.count);
    platform::setFatalStopHook(restore);
    watchForFailures(true);
}

TerminalState::~TerminalState() {
    leave();
    watchForFailures(false);
    platform::setFatalStopHook(nullptr);
}

bool TerminalState::enter() {
    if (restoration.isDue.load()) {
        leave(); // someone may have changed the settings while the program was stopped
    }
    termios settings{};
    if (::tcgetattr(m_descriptor, &settings) != 0) {
        return false;
    }
    restoration.settings = settings;
    restoration.isDue.store(true);
    settings.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    ::tcsetattr(m_descriptor, TCSANOW, &settings); // not after the output, which may be stopped
    writeAll(m_descriptor, m_enter.data(), m_enter.size());
    return true;
}

void TerminalState::leave() const noexcept {
    restore();
}

} // namespace vantor::hosts::terminal
