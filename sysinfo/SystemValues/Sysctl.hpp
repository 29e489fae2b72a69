// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/SystemValues/SysctlFetch.hpp"

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>

namespace vantor::SystemValues {

/// The kernel's values by whole keys (`Sysctl::getString("kern.ostype")`), and its namespaces, nested as the
/// keys are. A getter reads the key of its own name; absent where the kernel does not know it. Sizes are
/// bytes.
class Sysctl : public SysctlFetchMixin<Sysctl> {
public:
    using Text = std::optional<std::string>;
    using Count = std::optional<PackagesBase::UInt>;

    [[nodiscard]] static std::string namePrefix() { return ""; }

    class HW;
    class Kern;
    class Machdep;
    class VFS;
    class User;
    class VM;
    class Debug;
    class Net;
};

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

/// The kernel and the system around it.
class Sysctl::Kern : public SysctlFetchMixin<Kern> {
public:
    [[nodiscard]] static std::string namePrefix() { return "kern."; }

    [[nodiscard]] static Text osrevision() { return getString("osrevision"); }
    [[nodiscard]] static Text osproductversioncompat() { return getString("osproductversioncompat"); }
    [[nodiscard]] static Text osproductversion() { return getString("osproductversion"); }
    [[nodiscard]] static Text osreleasetype() { return getString("osreleasetype"); }
    [[nodiscard]] static Text bootargs() { return getString("bootargs"); }
    [[nodiscard]] static Text version() { return getString("version"); }
    [[nodiscard]] static Text hostname() { return getString("hostname"); }
    [[nodiscard]] static Text ostype() { return getString("ostype"); }
    [[nodiscard]] static Text osrelease() { return getString("osrelease"); }
};

class Sysctl::Machdep : public SysctlFetchMixin<Machdep> {
public:
    [[nodiscard]] static std::string namePrefix() { return "machdep."; }
};

class Sysctl::VFS : public SysctlFetchMixin<VFS> {
public:
    [[nodiscard]] static std::string namePrefix() { return "vfs."; }
};

class Sysctl::User : public SysctlFetchMixin<User> {
public:
    [[nodiscard]] static std::string namePrefix() { return "user."; }
};

class Sysctl::VM : public SysctlFetchMixin<VM> {
public:
    [[nodiscard]] static std::string namePrefix() { return "vm."; }
};

class Sysctl::Debug : public SysctlFetchMixin<Debug> {
public:
    [[nodiscard]] static std::string namePrefix() { return "debug."; }
};

class Sysctl::Net : public SysctlFetchMixin<Net> {
public:
    [[nodiscard]] static std::string namePrefix() { return "net."; }
};

} // namespace vantor::SystemValues
