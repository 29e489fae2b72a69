// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Disposal.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace vantor {

/// The widget's own figures of the documents' volume, in bytes, asked for at once. The first three parts of a
/// bar add up to `total`: used, releasable, available.
struct VolumeFigures {
    std::int64_t total = 0;
    std::int64_t used = 0;       ///< what the ring shows, of `total`
    std::int64_t releasable = 0; ///< what the user could give back at once
    std::int64_t available = 0;  ///< what is left
    std::int64_t free =
        0; ///< what the widget calls free: with what is releasable, unless it shows that apart
    std::int64_t reserved = 0; ///< beside the total: what the file system keeps back

    [[nodiscard]] double fraction() const { return static_cast<double>(used) / static_cast<double>(total); }
};

/// Asks the current machine by the widget's own sampler. Absent where the volume does not tell. Any thread.
[[nodiscard]] std::optional<VolumeFigures> volumeFigures();

/// A cache as a row.
struct CacheRow {
    platform::CacheItem item;
    /// Ticked from the start: it comes back by itself, and nobody used any of it for ninety days.
    bool isSuggested = false;
};

/// The storage page: what the widget's ring is made of, and what the user could give back. In bytes.
struct StoragePage {
    VolumeFigures figures;
    /// The trash, the caches and the rest add up to `figures.releasable`.
    std::int64_t trash = 0; ///< on the documents' volume
    std::vector<CacheRow>
        caches; ///< what may be released first, then what is kept; the largest of each first
    /// What came between the count and the figures: below 0 what was given back meanwhile. It is also what
    /// the widget still goes by where nothing can be counted now, or was only counted in part.
    std::int64_t rest = 0;
    bool isWhole = true;                       ///< false: the count was stopped
    std::vector<platform::SystemCache> system; ///< what needs the administrator; in `figures.used`, if there

    /// What the rows that may be released now would give back.
    [[nodiscard]] std::int64_t offered() const;
};

/// Counts by the current disposal, which the widget then goes by too, and asks the current machine. It takes
/// as long as the caches are large: ask on a worker. `now` is in seconds since 1970. `keepGoing` is asked
/// before each entry. Absent where the volume does not tell. Any thread.
[[nodiscard]] std::optional<StoragePage> storagePage(
    std::int64_t now, const platform::Disposal::KeepGoing& keepGoing = [] { return true; });

} // namespace vantor
