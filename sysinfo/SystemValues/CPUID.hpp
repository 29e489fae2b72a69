// SPDX-License-Identifier: MIT
#pragma once

#include "sysinfo/PackagesBase/Guarded.hpp"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vantor::SystemValues {

/// The CPUID instruction of the x86 processors. On every other processor each query is absent. Any thread;
/// the registers are those of the processor that the thread happens to run on.
class CPUID {
public:
    /// One completed query.
    struct Registers {
        std::uint32_t eax = 0;
        std::uint32_t ebx = 0;
        std::uint32_t ecx = 0;
        std::uint32_t edx = 0;
        std::uint32_t queryLevel1 = 0;            ///< the leaf that was asked for
        std::optional<std::uint32_t> queryLevel2; ///< the sub-leaf, if one was given

        bool operator==(const Registers&) const = default;
        [[nodiscard]] Registers copy() const { return *this; }

        /// "Registers(leaf: 0x4, sub-leaf: 0x1, eax: 0x1c004121, …)".
        friend std::ostream& operator<<(std::ostream& out, const Registers& registers);

        using Encoded = std::map<std::string, std::uint32_t>;
        /// The fields by their names; no "queryLevel2" where there is none.
        [[nodiscard]] Encoded encoded() const;
        /// Back from that; absent where a field other than "queryLevel2" is missing.
        [[nodiscard]] static std::optional<Registers> decoded(const Encoded& fields);

        /// Every completed query, in order. Reading gives a copy.
        static PackagesBase::Guarded<std::vector<Registers>> queryCache;

        /// The cached query of this leaf and sub-leaf, unless the cache is not wanted; else asks the
        /// processor and adds the result to the cache. Absent for a leaf that the processor does not have.
        /// While a `Replay` lives the cache is all there is.
        [[nodiscard]] static std::optional<Registers> from(std::uint32_t level1,
                                                           std::optional<std::uint32_t> extendedLevel2 = {},
                                                           bool doNotRecoverFromCache = false);
    };

    using Bits = std::optional<std::uint32_t>;

    CPUID() = delete;

    /// The number of a register's last bit.
    static constexpr std::uint8_t flagsLastBit = 31;

    /// The whole EAX of a leaf.
    [[nodiscard]] static Bits queryAndReturnEAXBits(std::uint32_t level1,
                                                    std::optional<std::uint32_t> extendedLevel2 = {});
    /// Bits `firstBit` to `lastBit` inclusive, shifted down to bit 0; absent where that is no range of a
    /// register.
    [[nodiscard]] static Bits queryAndReturnEAXBits(std::uint32_t level1,
                                                    std::optional<std::uint32_t> extendedLevel2,
                                                    std::uint8_t firstBit, std::uint8_t lastBit);

    // The figures of leaf 1, from the cache where it is there.
    [[nodiscard]] static Bits stepping();  ///< bits 0 to 3
    [[nodiscard]] static Bits model();     ///< bits 4 to 7
    [[nodiscard]] static Bits family();    ///< bits 8 to 11
    [[nodiscard]] static Bits type();      ///< bits 12 and 13
    [[nodiscard]] static Bits extModel();  ///< bits 16 to 19
    [[nodiscard]] static Bits extFamily(); ///< bits 20 to 27
    /// The family that vendors publish: the extended family is added where `family` is 15 (Intel SDM volume
    /// 2A, CPUID; AMD APM volume 3, function 1).
    [[nodiscard]] static Bits standard_family();
    /// The model that vendors publish: the extended model goes above the four bits where `family` is 6 or 15.
    [[nodiscard]] static Bits standard_model();

    /// The twelve letters by which a hypervisor names itself to its guests ("KVMKVMKVM"), without the NULs at
    /// their end. Absent where there is none.
    [[nodiscard]] static std::optional<std::string> hypervisor();

    /// The processor's name, 48 bytes of leaves 0x80000002 to 0x80000004, without the NULs and blanks at its
    /// end.
    [[nodiscard]] static std::optional<std::string> brandString();
};

} // namespace vantor::SystemValues
