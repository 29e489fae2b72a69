// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/app/StorageWork.hpp"
#include "platform/machine/CacheItem.hpp"

#include <QString>

namespace vantor::hosts::app {

/// Multiples of 1000: storage.
[[nodiscard]] QString storageSize(std::int64_t bytes);
/// How a cache comes back, or why it is kept.
[[nodiscard]] QString cacheDetail(const platform::CacheItem& item);
/// What a deletion came to, and what stayed.
[[nodiscard]] QString deletedText(const Deleted& deleted);

} // namespace vantor::hosts::app
