// SPDX-License-Identifier: MIT
#include "hosts/common/Signals.hpp"

#include <poll.h>

#include <atomic>

namespace vantor::hosts::common {

namespace {

constexpr int signalCount = 32; // those that are not real-time signals

std::atomic<std::uint32_t> pending{0}; // a bit for each number
const platform::posix::EventDescriptor* event = nullptr;
static_assert(std::atomic<std::uint32_t>::is_always_lock_free, "a handler may not wait");

extern "C" void noteSignal(int signal) {
    pending.fetch_or(1U << static_cast<unsigned>(signal));
    event->wake();
}

} // namespace

Signals::Signals(std::initializer_list<int> numbers, Again again) {
    pending = 0;
    event = &m_event;
    struct sigaction noting {};
    noting.sa_handler = noteSignal;
    noting.sa_flags = SA_RESTART;
    if (again == Again::actsByDefault) {
        noting.sa_flags |= static_cast<int>(SA_RESETHAND);
    }
    for (const int signal : numbers) {
        Before before{signal, {}};
        ::sigaction(signal, nullptr, &before.action);
        if (before.action.sa_handler != SIG_IGN) {
            ::sigaction(signal, &noting, nullptr);
            m_before.push_back(before);
        }
    }
}

Signals::~Signals() {
    for (const Before& before : m_before) {
        ::sigaction(before.signal, &before.action, nullptr);
    }
}

std::vector<int> Signals::take() const {
    m_event.drain(); // first: a signal that comes from here on can be read again
    const std::uint32_t come = pending.exchange(0);
    std::vector<int> signals;
    for (int signal = 1; signal < signalCount; ++signal) {
        if ((come & (1U << static_cast<unsigned>(signal))) != 0) {
            signals.push_back(signal);
        }
    }
    return signals;
}

bool Signals::await(int signal, std::chrono::milliseconds patience) const {
    using std::chrono::steady_clock;
    const std::uint32_t bit = 1U << static_cast<unsigned>(signal);
    const auto end = steady_clock::now() + patience;
    bool hasCome = false;
    for (;;) {
        m_event.drain(); // first: a signal that comes from here on can be read again
        hasCome = (pending.fetch_and(~bit) & bit) != 0;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - steady_clock::now());
        if (hasCome || left.count() <= 0) {
            break;
        }
        struct pollfd ready {};
        ready.fd = m_event.number();
        ready.events = POLLIN;
        ::poll(&ready, 1, static_cast<int>(left.count()));
    }
    if (pending != 0) {
        m_event.wake(); // for those that stay
    }
    return hasCome;
}

void Signals::actOn(int signal) {
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    struct sigaction before {};
    ::sigaction(signal, &byDefault, &before);
    ::raise(signal);
    ::sigaction(signal, &before, nullptr);
}

} // namespace vantor::hosts::common
