// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace vantor::platform {

/// The capacities of a volume, in bytes. A member is absent where that one figure is not known.
struct VolumeCapacities {
    std::optional<std::int64_t> total;                      ///< what is used and what is available
    std::optional<std::int64_t> available;                  ///< what a user could write now
    std::optional<std::int64_t> availableForImportantUsage; ///< and with what could be released at once
    std::optional<std::int64_t> reserved = {};              ///< beside the total: kept back for the system
};

} // namespace vantor::platform
