// SPDX-License-Identifier: MIT
#pragma once

#include "actions/FreeUpMemory.hpp"

namespace vantor {

/// The limits of what freeing memory may cost others.
namespace reclaim {

inline constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;
inline constexpr std::uint64_t step = 16 * mebibyte; ///< a call ends within it only, whatever is wanted
inline constexpr std::chrono::milliseconds pause{50};
inline constexpr std::chrono::milliseconds watched{2000}; ///< how long an application has to be idle

/// Whether a group took more than a hundredth of the time since then, and since two seconds at least.
[[nodiscard]] bool isAtWork(const platform::ReclaimableGroup& before, const platform::ReclaimableGroup& now,
                            Pace::Moment::duration since);

/// What the swap can take before less than two fifths of it are free: a service that ends programs when
/// memory and swap are short begins with those that hold most swap.
[[nodiscard]] std::uint64_t roomIn(const platform::SwapSpace& swap);

} // namespace reclaim

/// One run through the groups that were found idle.
class ReclaimRun {
public:
    ReclaimRun(const Pace& pace, Pace::Moment looked, std::uint64_t most);

    /// Whether the run may go on to the next group.
    bool take(const platform::ReclaimableGroup& group, const FreeUpMemory::KeepGoing& keepGoing,
              const FreeUpMemory::Progress& progress);
    [[nodiscard]] MemoryFreed result() const;

private:
    [[nodiscard]] std::optional<FreeUpEnd> harm();
    [[nodiscard]] bool hasPressure();
    [[nodiscard]] std::optional<FreeUpEnd> futility();
    [[nodiscard]] std::uint64_t moved() const;

    const Pace& m_pace;
    Pace::Moment m_looked;
    std::uint64_t m_most;
    platform::MemoryLevel m_before;
    platform::SwapSpace m_swapBefore;
    std::optional<platform::Pressure> m_pressure; ///< at m_pressureRead
    Pace::Moment m_pressureRead;
    std::uint64_t m_asked = 0;
    std::uint64_t m_taken = 0; ///< of that, what the kernel said it took
    bool m_isGain = false;     ///< known to be one
    int m_trials = 0;          ///< that gained too little
    struct Mark {
        std::uint64_t taken = 0, available = 0, moved = 0;
    } m_trial; ///< where the trial began
    std::optional<FreeUpEnd> m_end;
};

} // namespace vantor
