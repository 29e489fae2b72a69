// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/DetectProtocol.hpp"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#if defined(__x86_64__) || defined(__i386__) || defined(__aarch64__) || defined(__arm__) ||                  \
    defined(__powerpc__)
/// Whether the processor that this is built for is one of the cases below.
#define VANTOR_BUILT_FOR_KNOWN_ARCHITECTURE 1
#endif

namespace vantor::CpuDetect {

/// A processor architecture. `current()` goes by the numbers that the platform gives its processors, not by
/// `uname -m`: read its note before showing it to anyone.
class CpuArchitecture {
public:
    /// In this order: `HWInfo::CPU::is64Bit` tests positions.
    enum Case : std::uint8_t { ppc, ppcG3, ppcG4, ppcG5, ppc64, ppc64le, intel32, intel64, arm, arm64 };

    constexpr CpuArchitecture(Case which) : m_case(which) {}
    constexpr operator Case() const { return m_case; }

    /// "ppc", "ppc750", "ppc7450", "ppc970", "ppc64", "ppc64le", "i386", "x86_64", "arm", "arm64".
    [[nodiscard]] std::string_view rawValue() const;
    [[nodiscard]] static std::optional<CpuArchitecture> fromRawValue(std::string_view text);
    /// What tells one from another: the raw value.
    [[nodiscard]] std::string_view id() const { return rawValue(); }
    [[nodiscard]] std::string description() const { return std::string(rawValue()); }

    /// The architecture of the current process, from the type, subtype and family of the processor. The first
    /// one that is detected is kept for the life of the process; a detection that fails is tried again. Logs
    /// what it finds. Any thread.
    ///
    /// The types are compared bit by bit, any shared bit being enough, and those of Intel come first: 64-bit
    /// ARM (0x0100000C) shares bits with them and is `intel64` here. Callers know; show `hw.machine` instead.
    [[nodiscard]] static std::optional<CpuArchitecture> current();
    /// `current`, and one more log line.
    [[nodiscard]] static std::optional<CpuArchitecture> machineCurrent();
#ifdef VANTOR_BUILT_FOR_KNOWN_ARCHITECTURE
    /// The architecture that this library was built for.
    [[nodiscard]] static CpuArchitecture binaryCurrent();
#endif
    /// The architectures that the running executable holds code for: one. Absent where it is none of the
    /// cases.
    [[nodiscard]] static std::optional<std::vector<CpuArchitecture>> currentExecutableArchitectures();

    [[nodiscard]] constexpr bool isPPC() const { return m_case <= ppc64le; }
    [[nodiscard]] constexpr bool isPPC32() const { return m_case <= ppcG4; }
    [[nodiscard]] constexpr bool isPPC64() const { return m_case == ppc64 || m_case == ppc64le; }
    [[nodiscard]] constexpr bool isIntel() const { return m_case == intel32 || m_case == intel64; }
    [[nodiscard]] constexpr bool isArm() const { return m_case == arm || m_case == arm64; }
    /// On the platform, 64-bit ARM is one maker's.
    [[nodiscard]] constexpr bool isAppleSilicon() const { return m_case == arm64; }
    [[nodiscard]] constexpr bool is64Bit() const { return isPPC64() || m_case == intel64 || m_case == arm64; }
    /// The family's plain member: `ppc`, `intel32` or `arm`.
    [[nodiscard]] CpuArchitecture genericProcessorType() const;

private:
    Case m_case;
};

/// The raw value. A case alone would else be written as the character of its number.
std::ostream& operator<<(std::ostream& out, CpuArchitecture architecture);
std::ostream& operator<<(std::ostream& out, CpuArchitecture::Case which);

static_assert(PackagesBase::DetectProtocol<CpuArchitecture>);

/// The platform's numbers of a processor.
struct ProcessorNumbers {
    std::int32_t type = 0;
    std::int32_t subtype = 0;
    std::uint32_t family = 0;
};

/// The rules behind `current`, without reading or logging.
[[nodiscard]] std::optional<CpuArchitecture> architectureFor(const ProcessorNumbers& numbers);

} // namespace vantor::CpuDetect

/// @cond
template<>
struct std::hash<vantor::CpuDetect::CpuArchitecture> {
    std::size_t operator()(vantor::CpuDetect::CpuArchitecture architecture) const noexcept {
        return std::hash<std::string_view>()(architecture.rawValue());
    }
};
/// @endcond
