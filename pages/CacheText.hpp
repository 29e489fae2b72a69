// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/CacheItem.hpp"

#include <string>

namespace vantor {

/// A cache's name for people: its own, or what the rest of the cache folder is called in the viewer's
/// language.
[[nodiscard]] std::string cacheName(const platform::CacheItem& item);

/// How it comes back, why it is kept, or what it waits for, and whether its owner marked it as a cache: a
/// sentence in the viewer's language without a full stop.
[[nodiscard]] std::string cacheSentence(const platform::CacheItem& item);

/// What of the system this is, in the viewer's language.
[[nodiscard]] std::string systemCacheName(const platform::SystemCache& cache);

/// What a storage page calls its rest, by its sign.
[[nodiscard]] std::string storageRestName(std::int64_t rest);

} // namespace vantor
