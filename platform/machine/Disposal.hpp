// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/Current.hpp"
#include "platform/machine/CacheItem.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantor::platform {

/// Something in a trash.
struct TrashItem {
    std::string trash = {}; ///< the trash's folder
    std::string name = {};  ///< in the trash, as bytes
    /// Absent for a note about what is not there any more.
    std::optional<FileIdentity> identity = {};
    bool isExpunged = false; ///< deleted already by a file manager that has not come to it yet
    std::string origin = {}; ///< where it was, printable; its name where that is not known
    std::uint64_t bytes = 0; ///< what deleting it gives back, unless something else holds the same blocks
    std::optional<std::int64_t> trashed = {}; ///< seconds since 1970
};

/// What is in the user's trashes.
struct TrashContents {
    std::vector<TrashItem> items = {};
    std::vector<std::string> problems = {}; ///< which trash could not be looked into and why, in English
};

/// A volume and the bytes that are available on it.
struct VolumeSpace {
    std::string identity = {}; ///< bytes that are the same for folders on one volume
    std::uint64_t available = 0;
};

/// What became of an item.
struct Removal {
    std::uint64_t bytes = 0;   ///< the blocks of the files that were deleted with their last name
    std::uint64_t entries = 0; ///< files and folders that were deleted
    std::string problem = {};  ///< why something stayed, in English and printable; empty where nothing did
};

/// Deletes what the user threw away, and caches that come back. Any thread; calls may take as long as a disk
/// does.
class Disposal {
public:
    using KeepGoing = std::function<bool()>; ///< asked before each entry; false ends the work there

    virtual ~Disposal() = default;

    /// What is in the user's trashes now, on every volume that is this machine's own.
    virtual TrashContents trashItems(const KeepGoing& keepGoing) = 0;
    /// Deletes a listed item, if it still is the one that was listed.
    virtual Removal remove(const TrashItem& item, const KeepGoing& keepGoing) = 0;
    /// What the widget counts as releasable, counted now. A whole count is kept, so that running widgets go
    /// by it from their next report on. Empty where nothing counts.
    virtual ReleasableParts releasableParts(const KeepGoing& keepGoing) = 0;
    /// The names of all caches that may be released, whether they are there or not.
    virtual std::vector<std::string> cacheNames() = 0;
    /// Deletes a listed cache's folders: those that still are the ones that were listed, still are of a known
    /// cache that may be released, and are not in use.
    virtual Removal remove(const CacheItem& item, const KeepGoing& keepGoing) = 0;
    /// What is there that only the administrator can give back.
    virtual std::vector<SystemCache> systemCaches() = 0;
    /// The volume of a folder; absent where it does not say.
    virtual std::optional<VolumeSpace> volumeOf(const std::string& folder) = 0;
};

/// The disposal that a `Current<Disposal>` has put in place. Without one: fatal.
Disposal& currentDisposal();

} // namespace vantor::platform
