// SPDX-License-Identifier: MIT
#include "platform/linux/EventDescriptor.hpp"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace vantor::platform::linux_machine {

EventDescriptor::EventDescriptor() : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!m_descriptor.isOpen()) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

void EventDescriptor::wake() const noexcept {
    const int before = errno;
    const std::uint64_t one = 1;
    // It fails only when the count is full; then the descriptor can be read already.
    while (::write(m_descriptor.number(), &one, sizeof one) < 0 && errno == EINTR) {
    }
    errno = before;
}

bool EventDescriptor::drain() const noexcept {
    std::uint64_t count = 0;
    ssize_t got = -1;
    do {
        got = ::read(m_descriptor.number(), &count, sizeof count);
    } while (got < 0 && errno == EINTR);
    return got == sizeof count;
}

} // namespace vantor::platform::linux_machine
