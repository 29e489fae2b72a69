// SPDX-License-Identifier: MIT
#include "hosts/qt/TerminationSignals.hpp"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <cstdint>

namespace vantor::hosts::qt {

namespace {

constexpr std::array endingSignals{SIGTERM, SIGINT, SIGHUP};

int wakeDescriptor = -1; // written to by the handler, which may call no more than write(2)
QSocketNotifier* notifier = nullptr;

extern "C" void noteSignal(int /*signal*/) {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeDescriptor, &one, sizeof one);
}

} // namespace

TerminationSignals::TerminationSignals() {
    wakeDescriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    notifier = new QSocketNotifier(wakeDescriptor, QSocketNotifier::Read);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    struct sigaction action {};
    action.sa_handler = noteSignal;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int signal : endingSignals) {
        ::sigaction(signal, &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    for (const int signal : endingSignals) {
        ::signal(signal, SIG_DFL);
    }
    delete notifier;
    ::close(wakeDescriptor);
}

} // namespace vantor::hosts::qt
