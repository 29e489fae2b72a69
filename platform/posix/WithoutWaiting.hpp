// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::platform::posix {

/// While it lives, writes to a descriptor do not wait (O_NONBLOCK). The flag belongs to the open file, which
/// other processes may share, such as the shell's terminal: hold it for a few calls only. Nothing happens to
/// a descriptor that has the flag already. Async-signal-safe.
class WithoutWaiting {
public:
    explicit WithoutWaiting(int descriptor) noexcept;
    ~WithoutWaiting();
    WithoutWaiting(const WithoutWaiting&) = delete;
    WithoutWaiting& operator=(const WithoutWaiting&) = delete;

private:
    const int m_descriptor;
    int m_before = -1; ///< the flags to put back; -1: nothing to do
};

} // namespace vantor::platform::posix
