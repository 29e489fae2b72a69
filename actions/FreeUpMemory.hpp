// SPDX-License-Identifier: MIT
#pragma once

#include "actions/Pace.hpp"
#include "platform/machine/WorkloadControl.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vantor {

/// Why memory cannot be freed, or need not be.
enum class FreeUpRefusal : std::uint8_t {
    none,
    notTold,         ///< the machine does not tell how much memory is available
    noGroups,        ///< the kernel does not count memory by groups
    noOwnGroups,     ///< no application has a group that this user may reclaim from
    noSwap,          ///< there is nowhere to move pages to
    swapNearlyFull,  ///< less than two fifths of the swap are free
    enoughAvailable, ///< more than half of the memory is available
    nothingIdle,     ///< every application is at work, or holds nothing that was not touched lately
    stopped,         ///< before it was known
};

/// What ended the work.
enum class FreeUpEnd : std::uint8_t {
    finished,        ///< all that was listed was asked for
    compressesBadly, ///< pages went to swap, and hardly any memory came of it
    tookCache,       ///< the kernel gave cache away, which was available before
    underPressure,   ///< programs began to wait for memory
    swapNearlyFull,
    stopped, ///< by whoever asked for it
    refused, ///< by the system
};

/// What freeing came to. Bytes.
struct MemoryFreed {
    std::uint64_t availableBefore = 0;
    std::uint64_t availableAfter = 0;
    std::uint64_t moved = 0; ///< what the swap holds more than before
    FreeUpEnd end = FreeUpEnd::finished;
    bool operator==(const MemoryFreed&) const = default;
};

/// Moves to swap what idle applications have not touched lately: leaf by leaf and in small steps, with a look
/// at the machine after each. Applications at work are left alone, since they would stand still meanwhile.
/// On a worker, one thread at a time: both calls wait, and what they ask may take as long as a disk does.
class FreeUpMemory {
public:
    using KeepGoing = std::function<bool()>; ///< asked at each step; false ends the work there
    /// Bytes asked for so far, of `bytes()`.
    using Progress = std::function<void(std::uint64_t asked)>;

    /// Looks what could be moved, and takes nothing. Where something could it takes two seconds, which tell
    /// who is idle.
    explicit FreeUpMemory(
        const KeepGoing& keepGoing = [] { return true; }, Pace pace = {});

    [[nodiscard]] FreeUpRefusal refusal() const { return m_refusal; }
    /// The most that could be moved; 0 with a refusal.
    [[nodiscard]] std::uint64_t bytes() const { return m_bytes; }
    /// The memory at the look; absent where it is not told.
    [[nodiscard]] const std::optional<platform::MemoryLevel>& level() const { return m_level; }

    /// Does it. With a refusal nothing happens.
    [[nodiscard]] MemoryFreed run(
        const KeepGoing& keepGoing, const Progress& progress = [](std::uint64_t) {}) const;

private:
    [[nodiscard]] FreeUpRefusal look(const KeepGoing& keepGoing);

    Pace m_pace;
    std::optional<platform::MemoryLevel> m_level;
    std::vector<platform::ReclaimableGroup> m_groups; ///< the idle ones, those with most to move first
    Pace::Moment m_looked;                            ///< when their processor time was read
    std::uint64_t m_bytes = 0;
    FreeUpRefusal m_refusal;
};

} // namespace vantor
