// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/CpuDetect/CpuDetect.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantor::sysinfo {

using Text = std::optional<std::string>;
using Count = std::optional<PackagesBase::UInt>;

/// The cores of one speed; sizes are bytes of one cache.
struct CoreLevel {
    Count cores, coresInAll, threads, threadsInAll;
    Count l1Instruction, l1Data, l2, threadsPerL2;
};

/// Everything that the page and its JSON twin show. What the machine does not tell is absent.
struct Report {
    Text hostname, model, architecture;

    Text processor;                                        ///< the processor's own name
    std::optional<std::uint32_t> family, number, stepping; ///< of x86 processors, as vendors publish them
    Count cores, coresInAll, threads, threadsInAll, threadSlots;
    bool is64Bit = true;
    std::vector<CoreLevel> levels; ///< the fastest first

    Count memory, pageSize; ///< bytes
    bool gpuAsked = false;
    std::optional<CpuDetect::GPUDetection::GPU> gpu;

    Text systemType, release, version, productVersion, build, releaseType, bootArguments;

    struct Choices {
        bool gpu = true;   ///< whether to ask the graphics device
        bool cpuid = true; ///< whether CPUID is this machine's, or recorded
    };
    [[nodiscard]] static Report ofThisMachine(const Choices& choices);
};

/// For people: a page of text.
[[nodiscard]] std::string pageOf(const Report& report);

/// For programs: the same as JSON, numbers in bytes, absent values as null.
[[nodiscard]] std::string jsonOf(const Report& report);

} // namespace vantor::sysinfo
