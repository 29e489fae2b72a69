// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/Recording.hpp"

#include <cstdint>

namespace vantor::SystemValues {

/// Shows a recorded machine in place of this one while it lives: the query store and the CPUID cache hold
/// what was recorded, and neither the kernel, the processor nor a graphics driver is asked for anything else.
/// What a recording does not hold is absent. It counts in every thread; replays nest, and end in turn. Files
/// that a `FileSystemFetch` reads are this machine's as ever.
class Replay {
public:
    explicit Replay(const Recording& recording);
    ~Replay();
    Replay(const Replay&) = delete;
    Replay& operator=(const Replay&) = delete;

    /// Tells machines apart: 0 for this one, another number for each replay.
    [[nodiscard]] static std::uint64_t machine();
    [[nodiscard]] static bool isOn() { return machine() != 0; }
    /// The recorded graphics device.
    [[nodiscard]] static Recording::Device device();

private:
    std::uint64_t m_machineBefore;
    Recording::Device m_deviceBefore;
    SysctlQueryStorage::Records m_recordsBefore;
    std::vector<CPUID::Registers> m_queriesBefore;
    bool m_enabledBefore;
    bool m_recoverBefore;
};

} // namespace vantor::SystemValues
