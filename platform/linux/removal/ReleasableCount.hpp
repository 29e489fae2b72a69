// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/linux/removal/KeptReleasable.hpp"
#include "platform/machine/CacheItem.hpp"
#include "platform/posix/UserFolders.hpp"

#include <functional>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// Whose releasable storage is counted, and on which volume: that of the documents folder.
struct ReleasablePlaces {
    KernelTree tree{"/"}; ///< for proc
    posix::UserFolders folders;
    std::string documents = {};
};

/// Adds up, part by part, what the user could release at once on the documents' volume: the cache folder, a
/// known cache beside it, and the trashes. Neither is ever counted where its folder holds the home. Of what
/// is not on a local file system nothing counts, and it is not touched. Our own file in the cache folder
/// is in no part. A file with several names counts in the part in which the last of them is met. `keepGoing`
/// is asked before each entry; it may wait, and ends the count with false.
[[nodiscard]] ReleasableParts countReleasable(const ReleasablePlaces& places, LocalPaths& paths,
                                              const std::function<bool()>& keepGoing);

/// The file in which the last count is kept for all programs of ours.
[[nodiscard]] std::string keptReleasableFile(const posix::UserFolders& folders);

/// A count that is to be kept.
struct ReleasableCount {
    ReleasableParts parts;
    std::optional<KeptReleasable> kept; ///< absent where the count was stopped or the volume does not answer
};

/// Counts and keeps the result, if it is a whole one.
[[nodiscard]] ReleasableCount countAndKeep(const ReleasablePlaces& places, LocalPaths& paths,
                                           const std::function<bool()>& keepGoing);

} // namespace vantor::platform::linux
