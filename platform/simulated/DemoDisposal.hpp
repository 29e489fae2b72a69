// SPDX-License-Identifier: MIT
#pragma once

#include "platform/machine/Disposal.hpp"

#include <mutex>

namespace vantor::platform {

/// What could be given back on the machine of --demo: a trash and some caches that a person knows, which add
/// up to what DemoMachine calls releasable. Deleting empties these rows and touches nothing.
class DemoDisposal final : public Disposal {
public:
    DemoDisposal();

    TrashContents trashItems(const KeepGoing& keepGoing) override;
    Removal remove(const TrashItem& item, const KeepGoing& keepGoing) override;
    ReleasableParts releasableParts(const KeepGoing& keepGoing) override;
    std::vector<std::string> cacheNames() override;
    Removal remove(const CacheItem& item, const KeepGoing& keepGoing) override;
    std::vector<SystemCache> systemCaches() override;
    std::optional<VolumeSpace> volumeOf(const std::string& folder) override;

private:
    std::mutex m_mutex; // guards the rest
    std::vector<TrashItem> m_trash;
    std::vector<CacheItem> m_caches;
    std::uint64_t m_available;
};

} // namespace vantor::platform
