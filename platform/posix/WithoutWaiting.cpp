// SPDX-License-Identifier: MIT
#include "platform/posix/WithoutWaiting.hpp"

#include <fcntl.h>

#include <cerrno>

namespace vantor::platform::posix {

WithoutWaiting::WithoutWaiting(int descriptor) noexcept : m_descriptor(descriptor) {
    const int flags = ::fcntl(descriptor, F_GETFL);
    if (flags >= 0 && (flags & O_NONBLOCK) == 0 &&
        ::fcntl(descriptor, F_SETFL, flags | O_NONBLOCK) == 0) { // NOLINT(hicpp-signed-bitwise)
        m_before = flags;
    }
}

WithoutWaiting::~WithoutWaiting() {
    if (m_before >= 0) {
        const int error = errno; // a caller asks why its write failed
        ::fcntl(m_descriptor, F_SETFL, m_before);
        errno = error;
    }
}

} // namespace vantor::platform::posix
