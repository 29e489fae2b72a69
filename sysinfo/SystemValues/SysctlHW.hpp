// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/SysctlRoot.hpp"

#include <atomic>
#include <cstdint>

namespace vantor::SystemValues {

/// The machine itself.
class Sysctl::HW : public SysctlFetchMixin<HW>, public SysctlCPUInfoMixin<HW> {
public:
    class Optional;
    class Perflevel0;
    class Perflevel1;
    class PerflevelGeneralPurpose;

    [[nodiscard]] static std::string namePrefix() { return "hw."; }

    [[nodiscard]] static Count nperflevels() { return read("nperflevels"); }
    [[nodiscard]] static Count activecpu() { return read("activecpu"); }
    [[nodiscard]] static Count ncpu() { return read("ncpu"); }
    [[nodiscard]] static Count pagesize() { return read("pagesize"); }
    [[nodiscard]] static Text machine() { return getString("machine"); }
    [[nodiscard]] static std::optional<std::int32_t> cputype() { return getInteger<std::int32_t>("cputype"); }
    [[nodiscard]] static std::optional<std::int32_t> cpusubtype() {
        return getInteger<std::int32_t>("cpusubtype");
    }
    [[nodiscard]] static std::optional<std::uint32_t> cpufamily() {
        return getInteger<std::uint32_t>("cpufamily");
    }
    [[nodiscard]] static std::optional<std::uint32_t> cpusubfamily() {
        return getInteger<std::uint32_t>("cpusubfamily");
    }
    [[nodiscard]] static std::optional<bool> cpu64bit_capable() { return getBool("cpu64bit_capable"); }
    [[nodiscard]] static Count memsize() { return read("memsize"); }
    /// A number, although the key holds a name on most machines: such a name does not go into a number and is
    /// absent here. `getString("model")` reads it.
    [[nodiscard]] static Count model() { return read("model"); }
};

/// Optional features of the processor, by name.
class Sysctl::HW::Optional : public SysctlFetchMixin<Optional> {
public:
    class ARM;
    [[nodiscard]] static std::string namePrefix() { return "hw.optional."; }
};

class Sysctl::HW::Optional::ARM : public SysctlFetchMixin<ARM> {
public:
    [[nodiscard]] static std::string namePrefix() { return Optional::namePrefix() + "arm."; }
};

/// The fast cores; all cores where the machine has one kind.
class Sysctl::HW::Perflevel0 : public SysctlPerflevelMixin<Perflevel0> {
public:
    static constexpr std::uint8_t index = 0;
};

/// The frugal cores.
class Sysctl::HW::Perflevel1 : public SysctlPerflevelMixin<Perflevel1> {
public:
    static constexpr std::uint8_t index = 1;
};

/// The level that `index` says at the moment of the read.
class Sysctl::HW::PerflevelGeneralPurpose : public SysctlPerflevelMixin<PerflevelGeneralPurpose> {
public:
    static inline std::atomic<std::uint8_t> index{0};
};

} // namespace vantor::SystemValues
