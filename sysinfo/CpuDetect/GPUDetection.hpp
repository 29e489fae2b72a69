// SPDX-License-Identifier: MIT
#pragma once

#include "platform/gpu/MTLDevice.hpp"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace vantor::CpuDetect {

/// The graphics device.
class GPUDetection {
public:
    GPUDetection() = delete;

    struct GPU {
        std::string name;
        std::uint64_t vram =
            0; ///< bytes: the larger of its largest buffer and what is allocated; 0: not known
        bool hasUnifiedMemory = true; ///< true also where the system does not say

        GPU() = default;
        explicit GPU(const platform::MTLDevice& device);

        /// "Name 8 GB (Unified)"; without the last word for a device with memory of its own.
        [[nodiscard]] std::string infoString() const;
        bool operator==(const GPU&) const = default;
        /// The `infoString`.
        friend std::ostream& operator<<(std::ostream& out, const GPU& gpu);
    };

    /// The system's default device, asked afresh; absent without one. May take up to two seconds, during
    /// which a driver is started in a process of its own: call it when the figure is wanted.
    [[nodiscard]] static std::optional<GPU> systemDefault();
};

/// A count of bytes as people read memory: units of 1024 named KB to EB, no digits after the point for KB,
/// one for MB, two above; English, in any locale. "Zero KB", "1 byte", "512 bytes", "1.5 MB", "3 GB".
[[nodiscard]] std::string byteSizeText(std::uint64_t bytes);

} // namespace vantor::CpuDetect
