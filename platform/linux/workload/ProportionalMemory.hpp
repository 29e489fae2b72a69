// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/workload/WorkText.hpp"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace vantor::platform::linux {

/// What processes hold when each page counts for all that share it by parts (/proc/PID/smaps_rollup). The
/// kernel walks all pages of a process for that, up to some milliseconds, so that a few are counted at a
/// time; in between a process's count moves by what it holds more or less than when it was counted. Any
/// thread.
class ProportionalMemory {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;
    explicit ProportionalMemory(KernelTree tree, Clock clock = std::chrono::steady_clock::now)
        : m_tree(std::move(tree)), m_clock(std::move(clock)) {}

    /// From here on processes are asked for again; those that were not since the last time are forgotten.
    void beginRound();
    /// The memory of a process that holds `resident` now, shared pages in whole; that where it was not
    /// counted yet, and for one that never held half a megabyte, which is not counted.
    [[nodiscard]] ProcessMemory of(int process, std::uint64_t start, const ProcessMemory& resident);

    /// Whether some are to be counted: they are asked for again and again.
    [[nodiscard]] bool wantsCount();
    /// Counts five processes, the large ones that never were first, then those whose count is half a minute
    /// old, or five minutes where they hold much the same; fewer where one takes long. On a worker.
    void countFew();

private:
    using Key = std::pair<int, std::uint64_t>; ///< number and start
    struct Entry {
        ProcessMemory resident, counted;
        ProcessMemory residentThen; ///< when it was counted
        std::chrono::steady_clock::time_point time;
        bool wasCounted = false, isKnown = false; ///< the kernel tells it
        std::uint64_t round = 0;
        [[nodiscard]] std::chrono::steady_clock::time_point due() const; ///< of the next count
    };
    [[nodiscard]] std::optional<Key> next();

    const KernelTree m_tree;
    const Clock m_clock;
    std::mutex m_mutex; ///< guards what follows
    std::map<Key, Entry> m_entries;
    std::uint64_t m_round = 0;
    bool m_isCounting = false;
};

} // namespace vantor::platform::linux
