// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/MachineOptions.hpp"

#include <chrono>
#include <cstdint>
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
/// they are on that volume. A thread of the lowest processor and disk priority adds it up now and then, never
/// on a file system that is not local; the result is kept in the cache folder, and what another program of
/// ours found lately is taken over instead of a scan. The end of this object ends the thread, but does not
/// wait for one that hangs in the kernel.
class ReleasableScan {
public:
    /// Reads what an earlier run kept, unless it is older than a week, and starts the thread. Throws
    /// std::system_error where there is none to be had.
    ReleasableScan(posix::UserFolders folders, std::string documents, ScanPace pace);
    ~ReleasableScan();
    ReleasableScan(const ReleasableScan&) = delete;
    ReleasableScan& operator=(const ReleasableScan&) = delete;

    /// Bytes as of the last scan; 0 before the first. Any thread.
    [[nodiscard]] std::int64_t bytes() const;

private:
    struct State;
    std::shared_ptr<State> m_state;
};

/// One scan now, unpaced, for the volume of the documents folder; 0 where that is not local. May block.
[[nodiscard]] std::uint64_t releasableBytes(const posix::UserFolders& folders, const std::string& documents,
                                            const std::function<bool()>& keepGoing);

} // namespace vantor::platform::linux
