// SPDX-License-Identifier: MIT
#include "platform/posix/Descriptor.hpp"

#include <unistd.h>

#include <cstring>
#include <utility>

namespace vantor::platform::posix {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        reset();
        m_number = other.release();
    }
    return *this;
}

int Descriptor::release() {
    return std::exchange(m_number, -1);
}

void Descriptor::reset() {
    if (m_number >= 0) {
        ::close(release()); // after EINTR too the descriptor is gone on Linux
    }
}

std::string errorText(int error) {
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 32)
    if (const char* const text = ::strerrordesc_np(error)) {
        return text;
    }
#endif
    return "error " + std::to_string(error);
}

} // namespace vantor::platform::posix
