// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/FailureBoard.hpp"
#include "platform/linux/MachineOptions.hpp"
#include "platform/linux/ReleasableScan.hpp"
#include "platform/linux/VolumeWaiter.hpp"
#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/machine/VolumeCapacities.hpp"

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// Reads a volume's capacities for reports that ask several times in a row and must not see a failure begin
/// or end in between: a total of zero beside a used figure would be an infinite progress.
///
/// Calls that belong to one report are a burst: those of one work item of the global queue, however long its
/// worker is held up, and elsewhere those that follow each other within `sameBurst` (after `longestBurst`
/// within `shortestGap`, so that frequent reports do not run into each other for ever). What the first of
/// them found, an answer or a failure, holds for the others: figures are asked for again after `fresh`, but
/// within a burst a failed query leaves them as they are, a failed volume stays failed, and what a scan found
/// meanwhile does not count yet.
///
/// A volume on a local file system is asked on the calling thread, any other through the waiter. Any thread;
/// a second caller waits for the first, at most a second.
class VolumeReader {
public:
    static constexpr std::chrono::milliseconds sameBurst{100};
    static constexpr std::chrono::milliseconds fresh{10};
    static constexpr std::chrono::seconds longestBurst{2};
    static constexpr std::chrono::milliseconds shortestGap{8};

    VolumeReader(const MachineOptions& options, FailureBoard& failures, LocalPaths& paths);

    /// Counts what a scan finds as available for important usage on its own folder's volume. Before others
    /// read; the scan must outlive them.
    void count(ReleasableScan& scan) { m_scan = &scan; }

    /// The figures now; absent where the query failed, which is flagged.
    [[nodiscard]] std::optional<VolumeCapacities> read(const std::string& path);

private:
    struct Burst {
        std::uint64_t workItem = 0;
        std::string path; ///< empty: no call yet
        std::optional<VolumeFigures> figures;
        std::optional<Releasable> releasable;
        std::chrono::nanoseconds began{};
        std::chrono::nanoseconds asked{};
        std::chrono::nanoseconds lastCall{};
    };

    [[nodiscard]] static bool continues(const Burst& burst, const std::string& path,
                                        std::chrono::nanoseconds now);
    [[nodiscard]] Burst& burstOf(std::uint64_t workItem);
    void refresh(Burst& burst, const std::string& path, std::chrono::nanoseconds now);
    [[nodiscard]] VolumeAnswer ask(const std::string& path);

    const MachineOptions& m_options;
    FailureBoard& m_failures;
    std::mutex m_mutex;
    LocalPaths& m_paths;
    VolumeWaiter m_waiter;
    ReleasableScan* m_scan = nullptr;
    std::array<Burst, 8>
        m_bursts; ///< the first for calls from elsewhere, the others for work items under way
};

} // namespace vantor::platform::linux
