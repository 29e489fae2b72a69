// SPDX-License-Identifier: MIT
#include "platform/linux/control/ProcessHold.hpp"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace vantor::platform::linux {

ProcessHold::ProcessHold(int number) : m_descriptor(static_cast<int>(::syscall(SYS_pidfd_open, number, 0))) {}

std::string ProcessHold::signal(EndSignal which) {
    const int number = which == EndSignal::kill ? SIGKILL : SIGTERM;
    const bool isTold =
        ::syscall(SYS_pidfd_send_signal, m_descriptor.number(), number, nullptr, 0) == 0 || errno == ESRCH;
    return isTold ? std::string() : posix::errorText(errno);
}

bool ProcessHold::isRunning() {
    struct pollfd entry {};
    entry.fd = m_descriptor.number();
    entry.events = POLLIN; // once it has ended
    return posix::uninterrupted([&] { return ::poll(&entry, 1, 0); }) == 0;
}

} // namespace vantor::platform::linux
