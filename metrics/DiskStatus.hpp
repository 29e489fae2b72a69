// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vantor {

/// The capacity of the volume that holds the user's documents, in bytes. Each call asks the file system
/// afresh; a query that fails gives 0. Any thread.
class DiskStatus {
public:
    [[nodiscard]] static std::int64_t getTotalDiskSpace();

    /// The total, and from the same query what the file system keeps back for root or itself, which is in
    /// none of the other figures; 0 where it does not tell.
    struct Total {
        std::int64_t total = 0;
        std::int64_t reserved = 0;
    };
    [[nodiscard]] static Total getTotalAndReservedDiskSpace();

    /// What is available: plainly when "isReleasableSTORAGEShow" is on (and this is no phone app on a Mac),
    /// otherwise with what the system could release.
    [[nodiscard]] static std::int64_t getFreeDiskSpace();

    /// What the system could release for important use. May be negative. A successful query without one of
    /// the two figures, or an overflow, is fatal.
    [[nodiscard]] static std::int64_t getReleasableDiskSpace();

    /// Total less free, less what is releasable where that is shown apart; on a Mac with it added. Overflow
    /// is fatal.
    [[nodiscard]] static std::int64_t getUsedDiskSpace();
};

} // namespace vantor
