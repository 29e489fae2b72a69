// SPDX-License-Identifier: MIT
#include "hosts/terminal/screen/Signals.hpp"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>

namespace vantor::hosts::terminal {

namespace {

sigset_t handled() {
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGTSTP, SIGCONT, SIGWINCH, SIGCHLD}) {
        ::sigaddset(&set, signal);
    }
    return set;
}

int blockAndOpen() {
    const sigset_t set = handled();
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    return ::signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
}

} // namespace

Signals::Signals() : m_descriptor(blockAndOpen()) {}

Signals::~Signals() {
    const sigset_t set = handled();
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

std::vector<int> Signals::take() const {
    std::vector<int> signals;
    signalfd_siginfo next{};
    while (::read(number(), &next, sizeof next) == static_cast<::ssize_t>(sizeof next)) {
        signals.push_back(static_cast<int>(next.ssi_signo));
    }
    return signals;
}

void Signals::actOn(int signal) {
    sigset_t set;
    ::sigemptyset(&set);
    ::sigaddset(&set, signal);
    ::raise(signal);
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr); // here it takes effect
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

} // namespace vantor::hosts::terminal
