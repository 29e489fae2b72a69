// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/CacheItem.hpp"

#include <string_view>
#include <vector>

namespace vantor::platform::linux {

/// A cache that is known by its place. Places are patterns as fnmatch(3) knows them, part by part, below the
/// cache folder or, after "~/", below the home; locks are below the configuration folder or the home.
struct KnownCache {
    std::string_view name;
    CacheKind kind = CacheKind::harmless;
    CacheNature nature = CacheNature::working;
    std::vector<std::string_view> places;        ///< folders that go as a whole
    std::vector<std::string_view> programs = {}; ///< while one of these runs, it waits; the kernel's names
    std::vector<std::string_view> locks = {};    ///< links that name a running process: "host-1234"
};

/// What may be released: nothing else ever is. All of it is known to come back by itself.
[[nodiscard]] const std::vector<KnownCache>& knownCaches();

/// Why something else in the cache folder is kept, by its name there. Many programs keep there what does not
/// come back; what nobody has looked at is `unknown`.
[[nodiscard]] CacheNature keptNature(std::string_view name);

} // namespace vantor::platform::linux
