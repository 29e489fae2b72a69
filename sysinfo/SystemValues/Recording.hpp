// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"
#include "sysinfo/SystemValues/CPUID.hpp"
#include "sysinfo/SystemValues/SysctlQueryStorage.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::SystemValues {

/// What a machine answered, as a value: to look into a report from somewhere else, or to test against a
/// machine that is not at hand (`Replay`). It holds the host's name and the kernel's boot arguments.
struct Recording {
    using Device = std::optional<platform::MTLDevice>;

    SysctlQueryStorage::Records records;   ///< full key to the value's text
    std::vector<CPUID::Registers> queries; ///< of CPUID
    std::optional<Device> device;          ///< the graphics device; absent where nobody asked for it

    /// Every value that was read so far, every key of the machine and the kernel that the system can list,
    /// and the CPUID leaves behind the processor's name and numbers. Does not ask for the graphics device,
    /// which may take seconds: `recording.device = platform::MTLCreateSystemDefaultDevice()` does.
    [[nodiscard]] static Recording ofThisMachine();

    /// As JSON. Bytes that are not UTF-8 become U+FFFD.
    [[nodiscard]] std::string text() const;
    /// Back from that; absent, with the reason in `why`, where a text is no recording.
    [[nodiscard]] static std::optional<Recording> fromText(std::string_view text, std::string& why);

    bool operator==(const Recording&) const = default;
};

} // namespace vantor::SystemValues
