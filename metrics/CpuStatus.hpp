// SPDX-License-Identifier: MIT
#pragma once

namespace vantor {

/// How the processor's time was split, in percent. The four add up to 100; all are not-a-number when no tick
/// passed.
struct CpuUsage {
    double system = 0;
    double user = 0;
    double idle = 0;
    double nice = 0;
    bool operator==(const CpuUsage&) const = default;
};

/// Samples the host's processor time.
class CpuStatus {
public:
    /// The split since the previous call for the current machine; the first call for a machine tells of the
    /// whole time since it booted. A counter that fell is fatal. Any thread: calls take turns.
    [[nodiscard]] static CpuUsage getCpuUsage();
};

} // namespace vantor
