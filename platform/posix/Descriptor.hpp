// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <string>

namespace vantor::platform::posix {

/// An open descriptor; the end of this object closes it.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() { reset(); }
    Descriptor(Descriptor&& other) noexcept : m_number(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    int release(); ///< the number, which the caller then has to close; this holds none any more
    void reset();  ///< closes it now

private:
    int m_number = -1;
};

/// The English text of an error number, whatever the process's locale: reasons are English throughout.
[[nodiscard]] std::string errorText(int error);

/// Makes a call, and makes it again where a signal interrupted it (EINTR), but not for ever, since signals
/// may come in storms. `call` gives a negative number where it fails.
template<class Call>
[[nodiscard]] auto uninterrupted(const Call& call) {
    constexpr int attempts = 64;
    auto result = call();
    for (int i = 1; i < attempts && result < 0 && errno == EINTR; ++i) {
        result = call();
    }
    return result;
}

} // namespace vantor::platform::posix
