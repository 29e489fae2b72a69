// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/linux/removal/ReleasableCount.hpp"
#include "platform/machine/Disposal.hpp"

#include <string>
#include <utility>

namespace vantor::platform::linux {

/// The user's trashes after freedesktop.org's Trash specification: $XDG_DATA_HOME/Trash, and those on the
/// volumes of this machine's own; and the user's caches on the documents' volume. The trash in the home may
/// be on a network's or a user's file system: a child process looks first whether that answers, and one that
/// does not within a second is a problem of the contents. Any thread.
class LinuxDisposal final : public Disposal {
public:
    explicit LinuxDisposal(ReleasablePlaces places) : m_places(std::move(places)), m_paths(m_places.tree) {}

    TrashContents trashItems(const KeepGoing& keepGoing) override;
    Removal remove(const TrashItem& item, const KeepGoing& keepGoing) override;
    ReleasableParts releasableParts(const KeepGoing& keepGoing) override;
    std::vector<std::string> cacheNames() override;
    Removal remove(const CacheItem& item, const KeepGoing& keepGoing) override;
    std::vector<SystemCache> systemCaches() override;
    std::optional<VolumeSpace> volumeOf(const std::string& folder) override;

private:
    const ReleasablePlaces m_places;
    LocalPaths m_paths;
};

} // namespace vantor::platform::linux
