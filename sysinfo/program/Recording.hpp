// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"
#include "platform/sysctl/SysctlSource.hpp"
#include "sysinfo/CpuDetect/GPUDetection.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace vantor::sysinfo {

/// A graphics device that was asked for, which may be none; absent where nobody asked.
using AskedGpu = std::optional<std::optional<CpuDetect::GPUDetection::GPU>>;

/// What a machine answered, as JSON: the query store with every key that the libraries name, the CPUID
/// queries and the graphics device.
[[nodiscard]] std::string recorded(const AskedGpu& gpu);

/// Another machine in this one's place: the query store, the CPUID cache and the graphics device come from a
/// recording, and the kernel is not asked for anything else. It ends with the process.
class Replay {
public:
    /// Absent, with the reason in `why`, where the text is no recording.
    [[nodiscard]] static bool start(std::string_view recording, std::string& why);

    /// Whether the recording holds the queries behind the processor's name and numbers.
    [[nodiscard]] static bool hasProcessor();
    /// Whether the graphics device was asked for when it was made.
    [[nodiscard]] static bool hasGpu();
};

/// A whole file, 16 MiB at most; absent, with the reason in `why`.
[[nodiscard]] std::optional<std::string> fileContent(const std::string& path, std::string& why);
/// Writes a whole file; the reason where that fails.
[[nodiscard]] std::optional<std::string> writeFile(const std::string& path, std::string_view content);

} // namespace vantor::sysinfo
