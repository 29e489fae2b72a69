// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace vantor::platform {

/// The capacities of a volume, in bytes. A member is absent where the file system does not tell that one
/// figure.
struct VolumeCapacities {
    std::optional<std::int64_t> total;
    std::optional<std::int64_t> available;                  ///< what a user could write now
    std::optional<std::int64_t> availableForImportantUsage; ///< and with what could be released at once
};

} // namespace vantor::platform
