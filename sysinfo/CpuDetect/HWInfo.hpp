// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/Sysctl.hpp"

#include <optional>
#include <string>

namespace vantor::CpuDetect {

/// A type that names the sysctl namespace of its figures: `using Values = Sysctl::HW`.
template<class C>
concept CPUInfo = SystemValues::SysctlCPUInfo<typename C::Values>;

/// Supplies counts and cache sizes (bytes, of one cache) to a type that has `Values`. Absent where the kernel
/// does not tell.
template<class Self>
class CPUInfoMixin {
public:
    using Figure = std::optional<PackagesBase::UInt>;

    [[nodiscard]] static Figure threadsCount() { return values<Self>::logicalcpu(); }
    [[nodiscard]] static Figure coresCount() { return values<Self>::physicalcpu(); }
    [[nodiscard]] static Figure l1DataCacheAmmount() { return values<Self>::l1dcachesize(); }
    [[nodiscard]] static Figure l1InstructionCacheAmmount() { return values<Self>::l1icachesize(); }
    [[nodiscard]] static Figure l2CacheAmmount() { return values<Self>::l2cachesize(); }

private:
    template<class C>
    struct Checked {
        static_assert(CPUInfo<C>,
                      "this type needs `using Values` with a sysctl namespace that has CPU figures");
        using Values = typename C::Values;
    };
    template<class C>
    using values = typename Checked<C>::Values;
};

/// The machine's figures.
class HWInfo {
public:
    HWInfo() = delete;

    /// Installed memory in bytes.
    [[nodiscard]] static std::optional<PackagesBase::UInt> ramAmmount();

    /// The processor: all cores together, and by kind below.
    class CPU : public CPUInfoMixin<CPU> {
    public:
        using Values = SystemValues::Sysctl::HW;
        CPU() = delete;

        /// The kernel's word if it has one; else whether `CpuArchitecture::machineCurrent` is a 64-bit case.
        /// An architecture that cannot be detected counts as 64 bits.
        [[nodiscard]] static bool is64Bit();

        /// The name of the default graphics device without the letters "GPU": on the platform both are one
        /// chip. Nothing is trimmed: "M1 GPU" becomes "M1 ". Absent without a device. May take as long as
        /// asking the device does; `CPUID::brandString` names an x86 processor.
        [[nodiscard]] static std::optional<std::string> name();

        /// The fastest level; all cores of a machine with one kind.
        class PerformanceCores : public CPUInfoMixin<PerformanceCores> {
        public:
            using Values = SystemValues::Sysctl::HW::Perflevel0;
        };
        /// The next level; absent on a machine with one kind.
        class EfficiencyCores : public CPUInfoMixin<EfficiencyCores> {
        public:
            using Values = SystemValues::Sysctl::HW::Perflevel1;
        };
    };
};

} // namespace vantor::CpuDetect
