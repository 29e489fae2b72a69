// SPDX-License-Identifier: MIT
#pragma once

#include "platform/remote/readings/Reading.hpp"

namespace vantor::platform::remote {

/// The volume that will be full first: the fullest of those that hold a person's or a service's data. None of
/// them is in memory, another machine's, an image, part of starting the machine, read-only, or one that the
/// node could not ask. Without any, what is mounted at "/", as in a container. Null where that has no size
/// either. Points into the reading. Pure.
[[nodiscard]] const NodeVolume* fullestVolume(const Reading& reading);

/// What is used and what is available, in bytes, as of a volume of this machine: what is kept back for root
/// is in neither. The whole size where the node does not tell what is free. The volume has a size and
/// something available. Pure.
[[nodiscard]] std::uint64_t usableSize(const NodeVolume& volume);

/// How much of the usable size is used, 0 to 1: `df`'s Use%. Pure.
[[nodiscard]] double usedShare(const NodeVolume& volume);

} // namespace vantor::platform::remote
