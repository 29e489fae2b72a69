// SPDX-License-Identifier: MIT
#include "platform/posix/EventDescriptor.hpp"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace vantor::platform::posix {

EventDescriptor::EventDescriptor() : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!m_descriptor.isOpen()) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

void EventDescriptor::wake() const noexcept {
    const int before = errno;
    const std::uint64_t one = 1;
    // It fails only when the count is full; then the descriptor can be read already.
    (void)uninterrupted([&] { return ::write(m_descriptor.number(), &one, sizeof one); });
    errno = before;
}

bool EventDescriptor::drain() const noexcept {
    std::uint64_t count = 0;
    const ssize_t got = uninterrupted([&] { return ::read(m_descriptor.number(), &count, sizeof count); });
    return got == sizeof count;
}

} // namespace vantor::platform::posix
