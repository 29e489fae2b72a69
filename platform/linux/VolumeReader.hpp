// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/FailureBoard.hpp"
#include "platform/linux/MachineOptions.hpp"
#include "platform/linux/MountWatch.hpp"
#include "platform/linux/VolumeWaiter.hpp"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace vantor::platform::linux_machine {

/// Reads a volume's capacities for reports that ask several times in a row and must not see a failure begin
/// or end in between: a total of zero beside a used figure would be an infinite progress.
///
/// Calls that follow each other within `sameReport` belong together. What the first of them found, an answer
/// or a failure, holds for the others: figures are asked for again after `fresh`, but while the same report
/// goes on a failed query leaves them as they are, and a failed volume stays failed. (Reports more frequent
/// than `sameReport` would run into each other: after `longestReport` a gap of `shortestGap` is enough.)
///
/// A volume on a local file system is asked on the calling thread as long as no mount comes or goes; any
/// other is asked through the waiter. Any thread; a second caller waits for the first, at most a second.
class VolumeReader {
public:
    static constexpr std::chrono::milliseconds sameReport{100};
    static constexpr std::chrono::milliseconds fresh{10};
    static constexpr std::chrono::seconds longestReport{2};
    static constexpr std::chrono::milliseconds shortestGap{8};

    VolumeReader(const MachineOptions& options, FailureBoard& failures);

    /// The figures now; absent where the query failed, which is flagged.
    [[nodiscard]] std::optional<VolumeFigures> read(const std::string& path);

private:
    [[nodiscard]] bool continuesReport(std::chrono::nanoseconds now) const;
    [[nodiscard]] VolumeAnswer ask(const std::string& path);

    const MachineOptions& m_options;
    FailureBoard& m_failures;
    std::mutex m_mutex;
    MountWatch m_mounts;
    VolumeWaiter m_waiter;
    std::string m_localPath; ///< the path last found to be on a local file system

    std::string m_path; ///< of the last call; empty before the first
    std::optional<VolumeFigures> m_figures;
    std::chrono::nanoseconds m_reportBegan{};
    std::chrono::nanoseconds m_asked{};
    std::chrono::nanoseconds m_lastCall{};
};

} // namespace vantor::platform::linux_machine
