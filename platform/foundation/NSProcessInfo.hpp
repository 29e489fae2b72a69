// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vantor::platform {

/// What the process knows of the machine it runs on. Any thread.
class NSProcessInfo {
public:
    [[nodiscard]] static NSProcessInfo processInfo() { return {}; }

    /// Installed memory in bytes.
    [[nodiscard]] std::uint64_t physicalMemory() const;
    /// Whether this is a phone program running on a Mac.
    [[nodiscard]] bool isiOSAppOnMac() const;

private:
    NSProcessInfo() = default;
};

} // namespace vantor::platform
