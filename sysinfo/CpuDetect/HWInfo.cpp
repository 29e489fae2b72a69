// SPDX-License-Identifier: MIT
#include "sysinfo/CpuDetect/HWInfo.hpp"

#include "sysinfo/CpuDetect/CpuArchitecture.hpp"
#include "sysinfo/CpuDetect/GPUDetection.hpp"
#include "sysinfo/PackagesBase/Parsed.hpp"

namespace vantor::CpuDetect {

std::optional<PackagesBase::UInt> HWInfo::ramAmmount() {
    return SystemValues::Sysctl::HW::memsize();
}

bool HWInfo::CPU::is64Bit() {
    if (const std::optional<bool> told = Values::cpu64bit_capable()) {
        return *told;
    }
    // One bit for each position of `CpuArchitecture`; the one past the last stands for an absent
    // architecture.
    constexpr unsigned positions = 0x6B0;
    constexpr unsigned absent = 10;
    const std::optional<CpuArchitecture> architecture = CpuArchitecture::machineCurrent();
    const unsigned position = architecture ? static_cast<unsigned>(*architecture) : absent;
    return ((positions >> position) & 1U) != 0;
}

std::optional<std::string> HWInfo::CPU::name() {
    const std::optional<GPUDetection::GPU> gpu = GPUDetection::systemDefault();
    return gpu ? std::optional(PackagesBase::replacedOccurrences(gpu->name, "GPU", "")) : std::nullopt;
}

} // namespace vantor::CpuDetect
