// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// The last scan's result as it is kept between runs.
struct KeptReleasable {
    std::uint64_t volume = 0; ///< the file system's identity (statvfs(3) f_fsid)
    std::uint64_t bytes = 0;
    std::int64_t scanned = 0; ///< seconds since 1970
    bool operator==(const KeptReleasable&) const = default;
};

/// The text "vantor-releasable 1 <volume> <bytes> <seconds>" and a line feed; absent for anything else.
[[nodiscard]] std::optional<KeptReleasable> parseKeptReleasable(std::string_view text);
[[nodiscard]] std::string formatKeptReleasable(const KeptReleasable& kept);

/// Reads the kept result; absent where there is no usable one.
[[nodiscard]] std::optional<KeptReleasable> loadKeptReleasable(const std::string& path);
/// Replaces an older one in one step, and makes its folder where that is missing. What is kept is only a
/// hint, so that a full or read-only disk is no failure.
void saveKeptReleasable(const std::string& path, const KeptReleasable& kept);

} // namespace vantor::platform::linux
