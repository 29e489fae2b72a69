// SPDX-License-Identifier: MIT
#include "platform/linux/VolumeReader.hpp"

#include "platform/time/DispatchQueue.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::linux {

VolumeReader::VolumeReader(const MachineOptions& options, FailureBoard& failures, LocalPaths& paths)
    : m_options(options), m_failures(failures), m_paths(paths) {}

bool VolumeReader::continues(const Burst& burst, const std::string& path, std::chrono::nanoseconds now) {
    if (burst.path != path) {
        return false;
    }
    const bool outlasts = now - burst.began >= longestBurst;
    return burst.workItem != 0 || now - burst.lastCall < (outlasts ? shortestGap : sameBurst);
}

VolumeReader::Burst& VolumeReader::burstOf(std::uint64_t workItem) {
    if (workItem == 0) {
        return m_bursts.front();
    }
    const auto known = std::ranges::find(m_bursts, workItem, &Burst::workItem);
    if (known != m_bursts.end()) {
        return *known;
    }
    // More places than workers: the one not called for longest is over.
    Burst& oldest = *std::min_element(m_bursts.begin() + 1, m_bursts.end(),
                                      [](const Burst& a, const Burst& b) { return a.lastCall < b.lastCall; });
    oldest = Burst{};
    oldest.workItem = workItem;
    return oldest;
}

VolumeAnswer VolumeReader::ask(const std::string& path) {
    return m_paths.isLocal(path) ? queryVolume(path) : m_waiter.ask(path);
}

/// Asks where it is time to; what comes of it is in the burst.
void VolumeReader::refresh(Burst& burst, const std::string& path, std::chrono::nanoseconds now) {
    const bool goesOn = continues(burst, path, now);
    burst.lastCall = now;
    if (!goesOn) {
        burst = Burst{burst.workItem, path, {}, {}, now, now, now};
    } else if (!burst.figures || now - burst.asked < fresh) {
        return;
    }
    VolumeAnswer answer = ask(path);
    burst.lastCall = burst.asked = m_options.clock(); // a volume on a network takes its time
    if (answer.figures) {
        burst.figures = answer.figures;
        m_failures.clear(Source::storage);
        if (!burst.releasable && m_scan != nullptr && path == m_scan->documents()) {
            burst.releasable = m_scan->latest(*answer.figures, m_paths.isLocal(path));
        }
    } else if (!goesOn) {
        m_failures.fail(Source::storage, std::move(answer.reason));
    }
}

std::optional<VolumeCapacities> VolumeReader::read(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    Burst& burst = burstOf(currentWorkItem());
    refresh(burst, path, m_options.clock());
    if (!burst.figures) {
        return std::nullopt;
    }
    const VolumeFigures& figures = *burst.figures;
    const std::int64_t releasable = burst.releasable ? burst.releasable->left(figures.available) : 0;
    const std::int64_t room = figures.total - figures.available;
    return VolumeCapacities{figures.total, figures.available, figures.available + std::min(releasable, room),
                            figures.reserved};
}

} // namespace vantor::platform::linux
