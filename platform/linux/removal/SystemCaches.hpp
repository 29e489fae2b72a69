// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/machine/CacheItem.hpp"

#include <vector>

namespace vantor::platform::linux {

/// What package managers and the journal keep on this machine, with the command by which the administrator
/// gives it back. Nothing of it is ever run by us. `tree` is where var lies.
[[nodiscard]] std::vector<SystemCache> findSystemCaches(const KernelTree& tree);

} // namespace vantor::platform::linux
