// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/CpuDetect/CpuDetect.hpp"
#include "sysinfo/program/Figures.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor::sysinfo {

/// The cores of one speed; sizes are bytes of one cache.
struct CoreLevel {
    Count cores, coresInAll, threads, threadsInAll;
    Count l1Instruction, l1Data, l2, threadsPerL2;
};

/// Everything that the page and its JSON twin show. What the machine does not tell is absent.
struct Page {
    Text hostname, model, architecture, hypervisor;
    Count uptime; ///< seconds

    Text system, systemType, release, version, productVersion, build, releaseType;

    Text processor;                                        ///< the processor's own name
    std::optional<std::uint32_t> family, number, stepping; ///< of x86 processors, as vendors publish them
    Count packages, cores, coresInAll, threads, threadsInAll, threadSlots;
    Count frequency; ///< the highest, in Hz
    bool is64Bit = true;
    std::vector<CoreLevel> levels; ///< the fastest first
    Count l3, threadsPerL3;        ///< bytes of one cache

    Count memory, swap, pageSize; ///< bytes
    bool gpuAsked = false;
    std::optional<CpuDetect::GPUDetection::GPU> gpu;

    /// Of this machine, or of the one that a replay shows. Asking for the graphics device may take two
    /// seconds.
    [[nodiscard]] static Page read(bool asksGpu);
};

} // namespace vantor::sysinfo
