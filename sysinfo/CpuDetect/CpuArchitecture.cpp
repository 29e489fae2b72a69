// SPDX-License-Identifier: MIT
#include "sysinfo/CpuDetect/CpuArchitecture.hpp"

#include "sysinfo/CpuDetect/Printer.hpp"
#include "sysinfo/SystemValues/PerMachine.hpp"
#include "sysinfo/SystemValues/Sysctl.hpp"

#include <array>
#include <ostream>

namespace vantor::CpuDetect {

namespace {

using SystemValues::Sysctl;

constexpr std::array<std::string_view, 10> rawValues{"ppc",     "ppc750", "ppc7450", "ppc970", "ppc64",
                                                     "ppc64le", "i386",   "x86_64",  "arm",    "arm64"};

constexpr std::uint32_t intelType = 7;
constexpr std::uint32_t armType = 12;
constexpr std::uint32_t powerType = 18;
constexpr std::uint32_t wide = 0x01000000; // marks the 64-bit variant of a type

constinit SystemValues::PerMachine<CpuArchitecture> detected;

/// Sharing one bit is enough: that is the rule, not a slip.
bool shares(std::uint32_t number, std::uint32_t mask) {
    return (number & mask) != 0;
}

bool looksLike(const ProcessorNumbers& numbers, std::uint32_t subtypeMask, std::uint32_t familyMask) {
    return shares(static_cast<std::uint32_t>(numbers.subtype), subtypeMask) ||
           shares(numbers.family, familyMask);
}

bool isG5(const ProcessorNumbers& numbers) {
    return looksLike(numbers, 100, 0xED76D8AA);
}

/// The rules for the 32-bit types close the chain. The 64-bit masks hold all of their bits, so that none of
/// them is ever asked; they stand here for the day when a mask is narrowed.
std::optional<CpuArchitecture> architectureOf32Bits(const ProcessorNumbers& numbers) {
    const auto type = static_cast<std::uint32_t>(numbers.type);
    if (shares(type, armType)) {
        return CpuArchitecture::arm;
    }
    if (shares(type, intelType)) {
        return Sysctl::HW::cpu64bit_capable().value_or(false) ? CpuArchitecture::intel64
                                                              : CpuArchitecture::intel32;
    }
    if (shares(type, powerType)) {
        return looksLike(numbers, 9, 0xCEE41549)    ? CpuArchitecture::ppcG3
               : looksLike(numbers, 11, 0x77C184AE) ? CpuArchitecture::ppcG4
               : isG5(numbers)                      ? CpuArchitecture::ppcG5
                                                    : CpuArchitecture::ppc;
    }
    return std::nullopt;
}

/// Logs a number or its absence.
template<class T>
std::optional<T> logged(std::optional<T> number, std::string_view text, std::string_view failure) {
    if (number) {
        Printer::print(std::string(text) + " " + std::to_string(*number));
    } else {
        Printer::errorPrint(failure);
    }
    return number;
}

/// In this order; the first number that is absent ends it.
std::optional<ProcessorNumbers> readNumbers() {
    const auto type =
        logged(Sysctl::HW::cputype(), "Detected CPU type number:", "Can't get the cpu type value");
    if (!type) {
        return std::nullopt;
    }
    const auto subtype =
        logged(Sysctl::HW::cpusubtype(), "Detected CPU subtype number:", "Can't get the cpu subtype value");
    if (!subtype) {
        return std::nullopt;
    }
    // The message brings a mark of its own, and the printer adds another: readers of the log expect both.
    const auto family = logged(Sysctl::HW::cpufamily(),
                               "Detected CPU family number:", "ERROR: Can't get the cpu family value");
    if (!family) {
        return std::nullopt;
    }
    return ProcessorNumbers{*type, *subtype, *family};
}

std::string rawValueOf(std::optional<CpuArchitecture> architecture) {
    return architecture ? architecture->description() : "[Arch not detected]";
}

} // namespace

std::string_view CpuArchitecture::rawValue() const {
    return rawValues.at(m_case);
}

std::optional<CpuArchitecture> CpuArchitecture::fromRawValue(std::string_view text) {
    for (std::size_t i = 0; i < rawValues.size(); ++i) {
        if (rawValues.at(i) == text) {
            return static_cast<Case>(i);
        }
    }
    return std::nullopt;
}

std::ostream& operator<<(std::ostream& out, CpuArchitecture architecture) {
    return out << architecture.rawValue();
}

std::ostream& operator<<(std::ostream& out, CpuArchitecture::Case which) {
    return out << CpuArchitecture(which);
}

CpuArchitecture CpuArchitecture::genericProcessorType() const {
    return isPPC() ? ppc : isIntel() ? intel32 : arm;
}

std::optional<CpuArchitecture> architectureFor(const ProcessorNumbers& numbers) {
    const auto type = static_cast<std::uint32_t>(numbers.type);
    if (shares(type, wide | intelType)) {
        return CpuArchitecture::intel64;
    }
    if (shares(type, wide | armType)) {
        return CpuArchitecture::arm64;
    }
    if (shares(type, wide | powerType)) {
        return isG5(numbers) ? CpuArchitecture::ppcG5 : CpuArchitecture::ppc64;
    }
    return architectureOf32Bits(numbers);
}

std::optional<CpuArchitecture> CpuArchitecture::current() {
    if (const std::optional<CpuArchitecture> known = detected.value()) {
        return known;
    }
    const std::optional<ProcessorNumbers> numbers = readNumbers();
    if (!numbers) {
        return std::nullopt;
    }
    const std::optional<CpuArchitecture> result = architectureFor(*numbers);
    detected.keep(result);
    Printer::print("Detected cpu architecture of the current process is: " + rawValueOf(result));
    return result;
}

std::optional<CpuArchitecture> CpuArchitecture::machineCurrent() {
    const std::optional<CpuArchitecture> result = current();
    Printer::print("The actual cpu architecture of the current machine is: " + rawValueOf(result));
    return result;
}

#ifdef VANTOR_BUILT_FOR_KNOWN_ARCHITECTURE
CpuArchitecture CpuArchitecture::binaryCurrent() {
#if defined(__x86_64__)
    return intel64;
#elif defined(__i386__)
    return intel32;
#elif defined(__aarch64__)
    return arm64;
#elif defined(__arm__)
    return arm;
#elif defined(__powerpc64__) && defined(__LITTLE_ENDIAN__)
    return ppc64le;
#elif defined(__powerpc64__)
    return ppc64;
#else
    return ppc;
#endif
}
#endif

std::optional<std::vector<CpuArchitecture>> CpuArchitecture::currentExecutableArchitectures() {
#ifdef VANTOR_BUILT_FOR_KNOWN_ARCHITECTURE
    return std::vector{binaryCurrent()};
#else
    return std::nullopt;
#endif
}

} // namespace vantor::CpuDetect
