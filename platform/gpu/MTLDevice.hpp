// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/Current.hpp"

#include <cstdint>
#include <optional>
#include <string>

namespace vantor::platform {

/// What a graphics device tells of itself.
struct MTLDevice {
    std::string name;
    std::uint64_t maxBufferLength = 0;      ///< bytes of the largest memory of its own; 0: not known
    std::uint64_t currentAllocatedSize = 0; ///< bytes in use there; 0: none, or not known
    std::optional<bool> hasUnifiedMemory =
        {}; ///< shares the processor's memory; absent: the system does not say
    bool operator==(const MTLDevice&) const = default;
};

/// Where the default device comes from: the system, or a test. Any thread.
class MTLDeviceSource {
public:
    MTLDeviceSource() = default;
    MTLDeviceSource(const MTLDeviceSource&) = delete;
    MTLDeviceSource& operator=(const MTLDeviceSource&) = delete;
    virtual ~MTLDeviceSource() = default;

    [[nodiscard]] virtual std::optional<MTLDevice> systemDefaultDevice() = 0;
};

/// The source that is used where no `Current<MTLDeviceSource>` has put another in place: the system's own. It
/// comes with the library of the system that the program is linked for.
[[nodiscard]] MTLDeviceSource& defaultMTLDeviceSource();

/// The default graphics device; absent where there is none. Asking may start a driver and take up to two
/// seconds: ask when the figure is wanted, not before. Never fails otherwise.
[[nodiscard]] std::optional<MTLDevice> MTLCreateSystemDefaultDevice();

} // namespace vantor::platform
