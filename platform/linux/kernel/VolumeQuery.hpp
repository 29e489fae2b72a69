// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// A volume's capacities in bytes, as `df` makes its Use% of them: the total is what is used and what a user
/// who is not root may still use.
struct VolumeFigures {
    std::int64_t total = 0;
    std::int64_t available = 0;
    std::int64_t reserved = 0;  ///< neither: what the file system keeps back for root or itself
    std::uint64_t identity = 0; ///< equal for the same file system: f_fsid of statvfs(3)
};

/// The answer of statvfs(3), or why there is none.
struct VolumeAnswer {
    std::optional<VolumeFigures> figures;
    std::string reason; ///< where there are none; names the path
};

/// Asks for the volume that holds a path; where the folder does not exist, for the one on which it would be
/// made. It may block for as long as a network's or a user's file system does. A volume of size zero, such as
/// /proc or an empty automount, counts as a failure. Any thread.
[[nodiscard]] VolumeAnswer queryVolume(const std::string& path);

} // namespace vantor::platform::linux
