// SPDX-License-Identifier: MIT
#include "platform/linux/kernel/MountWatch.hpp"

#include <fcntl.h>
#include <poll.h>

namespace vantor::platform::linux {

bool MountWatch::changed() {
    const bool first = !m_descriptor.isOpen();
    if (first) {
        m_descriptor = posix::Descriptor(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC));
    }
    struct pollfd question {};
    question.fd = m_descriptor.number();
    question.events = POLLPRI;
    if (!m_descriptor.isOpen() || ::poll(&question, 1, 0) < 0) {
        return true;
    }
    return first || (question.revents & (POLLPRI | POLLERR | POLLNVAL)) != 0;
}

} // namespace vantor::platform::linux
