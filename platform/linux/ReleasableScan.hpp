// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/linux/kernel/VolumeQuery.hpp"
#include "platform/linux/removal/KeptReleasable.hpp"
#include "platform/posix/UserFolders.hpp"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace vantor::platform::linux {

/// How often a scan runs and how it is paced.
struct ScanPace {
    std::chrono::milliseconds firstDelay{20'000}; ///< the program's start comes first
    std::chrono::minutes interval{15};
    int entriesBetweenRests = 128;
    std::chrono::milliseconds rest{10}; ///< some 10,000 entries a second at most
};

/// Knows how much of a volume the user could release at once: the user's cache folder and trash, as far as
/// they are on that volume. A thread of the lowest processor and disk priority adds it up now and then. It
/// touches nothing before a report has found the volume local, so that it never hangs in a network's. The
/// result is kept in the cache folder; what another program of ours kept there lately is taken over instead
/// of a scan, and noticed at the next report. The end of this object ends the thread, but does not wait for
/// one that hangs in the kernel.
class ReleasableScan {
public:
    /// Starts the thread; without one to be had nothing counts as releasable.
    ReleasableScan(posix::UserFolders folders, std::string documents, ScanPace pace,
                   std::shared_ptr<LocalPaths> paths);
    ~ReleasableScan();
    ReleasableScan(const ReleasableScan&) = delete;
    ReleasableScan& operator=(const ReleasableScan&) = delete;

    /// The folder whose volume is scanned.
    [[nodiscard]] const std::string& documents() const;

    /// For a report that begins, with what the volume answered and whether it is on a local file system: the
    /// latest result for that volume, less what the volume was seen to gain since; that stays off until the
    /// next scan. Nothing before the first, which may be an earlier run's if that is not older than a week:
    /// the first call waits for that, at most 100 ms. Any thread.
    [[nodiscard]] Releasable latest(const VolumeFigures& volume, bool isLocal);

private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace vantor::platform::linux
