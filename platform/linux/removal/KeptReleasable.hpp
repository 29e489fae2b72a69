// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantor::platform::linux {

/// What a scan found, in bytes.
struct Releasable {
    std::int64_t bytes = 0;     ///< what could be released then
    std::int64_t available = 0; ///< what the volume had available then

    /// What of it is left. As much as the volume gained since may be what was released meanwhile, and counts
    /// as available already.
    [[nodiscard]] std::int64_t left(std::int64_t availableNow) const {
        const std::int64_t gained = std::max<std::int64_t>(availableNow - available, 0);
        return std::max<std::int64_t>(bytes - gained, 0);
    }
    bool operator==(const Releasable&) const = default;
};

/// The last scan's result as it is kept between runs.
struct KeptReleasable {
    std::uint64_t volume = 0; ///< the file system's identity (statvfs(3) f_fsid)
    Releasable result;
    std::int64_t scanned = 0; ///< seconds since 1970
    bool operator==(const KeptReleasable&) const = default;
};

/// The text "vantor-releasable 2 <volume> <bytes> <available> <seconds>" and a line feed; absent for anything
/// else.
[[nodiscard]] std::optional<KeptReleasable> parseKeptReleasable(std::string_view text);
[[nodiscard]] std::string formatKeptReleasable(const KeptReleasable& kept);

/// Reads the kept result; absent where there is no usable one.
[[nodiscard]] std::optional<KeptReleasable> loadKeptReleasable(const std::string& path);
/// Replaces an older one in one step, and makes its folder where that is missing. What is kept is only a
/// hint, so that a full or read-only disk is no failure.
void saveKeptReleasable(const std::string& path, const KeptReleasable& kept);

/// Tells whether a kept result was replaced, by another program of ours, since it was last asked. One stat(2)
/// a question. Not for several threads at once.
class KeptWatch {
public:
    explicit KeptWatch(std::string path) : m_path(std::move(path)) {}
    /// True also for the first question, if the file is there then.
    [[nodiscard]] bool changed();

private:
    std::string m_path;
    std::string m_state; ///< empty: it was not there
};

} // namespace vantor::platform::linux
