// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/BoolFromInt.hpp"
#include "sysinfo/SystemValues/SysctlQuery.hpp"

#include <concepts>
#include <string>
#include <string_view>

namespace vantor::SystemValues {

/// A type that names a part of the sysctl tree.
template<class N>
concept HasNamePrefix = requires {
    { N::namePrefix() } -> std::convertible_to<std::string>;
};

/// A namespace of sysctl keys: a static `namePrefix()`, which ends in "." unless it is empty, and the fetch
/// operations with that prefix put before each name.
template<class N>
concept SysctlFetch = HasNamePrefix<N> && PackagesBase::FetchProtocol<N>;

/// Supplies the fetch operations to a type with a static `namePrefix()`:
/// `struct Vendor : SysctlFetchMixin<Vendor> { static std::string namePrefix() { return "vendor."; } };`
template<class Self>
class SysctlFetchMixin : public PackagesBase::FetchProtocolBoolFromIntMixin<Self> {
public:
    /// The value as text; absent where the key is unknown or cannot be read.
    [[nodiscard]] static std::optional<std::string> getString(std::string_view name) {
        return querySysctlText(fullKey(name));
    }
    /// The value read into exactly T's width; absent where the kernel's answer does not go into it.
    template<PackagesBase::FixedWidthInteger T>
    [[nodiscard]] static std::optional<T> getInteger(std::string_view name) {
        return querySysctlInteger<T>(fullKey(name));
    }

private:
    static std::string fullKey(std::string_view name) {
        static_assert(HasNamePrefix<Self>, "a sysctl namespace needs a static `std::string namePrefix()`");
        return std::string(Self::namePrefix()).append(name);
    }
};

/// Core counts and cache sizes under the conformer's own prefix. Absent where the kernel does not tell.
template<class Self>
class SysctlCPUInfoMixin {
public:
    using Figure = std::optional<PackagesBase::UInt>;

    [[nodiscard]] static Figure physicalcpu() { return read("physicalcpu"); }         ///< cores in use
    [[nodiscard]] static Figure physicalcpu_max() { return read("physicalcpu_max"); } ///< cores in all
    [[nodiscard]] static Figure logicalcpu() { return read("logicalcpu"); }           ///< threads in use
    [[nodiscard]] static Figure logicalcpu_max() { return read("logicalcpu_max"); }   ///< threads in all
    [[nodiscard]] static Figure l1icachesize() { return read("l1icachesize"); }       ///< bytes, one cache
    [[nodiscard]] static Figure l1dcachesize() { return read("l1dcachesize"); }       ///< bytes, one cache
    [[nodiscard]] static Figure l2cachesize() { return read("l2cachesize"); }         ///< bytes, one cache

protected:
    [[nodiscard]] static Figure read(std::string_view name) {
        static_assert(SysctlFetch<Self>, "core and cache figures need a sysctl namespace to read from");
        return Self::template getInteger<PackagesBase::UInt>(name);
    }
};

template<class N>
concept SysctlCPUInfo = SysctlFetch<N> && std::derived_from<N, SysctlCPUInfoMixin<N>>;

/// One level of cores, 0 the fastest, under "hw.perflevelN.". The conformer has a static `index` (8 bits).
template<class Self>
class SysctlPerflevelMixin : public SysctlFetchMixin<Self>, public SysctlCPUInfoMixin<Self> {
public:
    [[nodiscard]] static std::string namePrefix() {
        static_assert(
            requires {
                { Self::index } -> std::convertible_to<std::uint8_t>;
            }, "a performance level needs a static `std::uint8_t index`");
        return "hw.perflevel" + std::to_string(static_cast<std::uint8_t>(Self::index)) + ".";
    }
    /// Threads that share one second-level cache.
    [[nodiscard]] static std::optional<PackagesBase::UInt> cpusperl2() { return Self::read("cpusperl2"); }
};

template<class N>
concept SysctlPerflevel = SysctlCPUInfo<N> && std::derived_from<N, SysctlPerflevelMixin<N>>;

} // namespace vantor::SystemValues
