// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/CPUID.hpp"

#include "sysinfo/PackagesBase/Text.hpp"
#include "sysinfo/SystemValues/Replay.hpp"

#include <algorithm>
#include <ostream>
#include <sstream>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#define VANTOR_HAS_CPUID 1
#else
#define VANTOR_HAS_CPUID 0
#endif

namespace vantor::SystemValues {

namespace {

#if VANTOR_HAS_CPUID
CPUID::Registers ask(std::uint32_t leaf, std::optional<std::uint32_t> subLeaf = {}) {
    CPUID::Registers result;
    result.queryLevel1 = leaf;
    result.queryLevel2 = subLeaf;
    __cpuid_count(leaf, subLeaf.value_or(0), result.eax, result.ebx, result.ecx, result.edx);
    return result;
}

/// The processor answers a leaf past the highest one with another leaf's content. Each range of leaves begins
/// with one whose EAX is its highest: the basic ones, the extended ones, and a hypervisor's (Intel SDM volume
/// 2A, CPUID; the Linux kernel's asm/cpuid.h), which is there where bit 31 of leaf 1's ECX says so.
bool hasLeaf(std::uint32_t leaf) {
    constexpr std::uint32_t hypervisor = 0x40000000;
    const std::uint32_t range = leaf & 0xFFFF0000U;
    if (range == hypervisor) {
        return (ask(1).ecx >> 31U) != 0 && (leaf == hypervisor || leaf <= ask(hypervisor).eax);
    }
    return __get_cpuid_max(range & 0x80000000U, nullptr) >= leaf;
}
#endif

std::optional<CPUID::Registers> askProcessor(std::uint32_t leaf, std::optional<std::uint32_t> subLeaf) {
#if VANTOR_HAS_CPUID
    if (!Replay::isOn() && hasLeaf(leaf)) {
        return ask(leaf, subLeaf);
    }
#else
    static_cast<void>(leaf);
    static_cast<void>(subLeaf);
#endif
    return std::nullopt;
}

std::uint32_t bitsOf(std::uint32_t word, std::uint8_t first, std::uint8_t last) {
    const std::uint32_t mask = ~std::uint32_t{0} >> (CPUID::flagsLastBit - (last - first));
    return (word >> first) & mask;
}

/// Four letters a register, the lowest byte first; no NULs and blanks at the end.
std::string textIn(const std::vector<std::uint32_t>& words) {
    std::string bytes;
    for (const std::uint32_t word : words) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>((word >> shift) & 0xFFU);
        }
    }
    bytes.resize(std::min(bytes.find('\0'), bytes.size()));
    bytes.resize(bytes.find_last_not_of(' ') + 1);
    return PackagesBase::repairedUtf8(bytes);
}

/// Any cached query of leaf 1 will do, whatever its sub-leaf: the leaf has none.
std::optional<CPUID::Registers> leaf1() {
    const auto cached = CPUID::Registers::queryCache.with([](const std::vector<CPUID::Registers>& queries) {
        const auto found =
            std::ranges::find_if(queries, [](const CPUID::Registers& each) { return each.queryLevel1 == 1; });
        return found != queries.end() ? std::optional(*found) : std::nullopt;
    });
    return cached ? cached : CPUID::Registers::from(1);
}

CPUID::Bits leaf1Bits(std::uint8_t first, std::uint8_t last) {
    const auto registers = leaf1();
    return registers ? CPUID::Bits(bitsOf(registers->eax, first, last)) : std::nullopt;
}

} // namespace

constinit PackagesBase::Guarded<std::vector<CPUID::Registers>> CPUID::Registers::queryCache;

std::ostream& operator<<(std::ostream& out, const CPUID::Registers& registers) {
    std::ostringstream text; // so that the caller's stream keeps its own base
    text << std::hex << std::showbase << "Registers(leaf: " << registers.queryLevel1;
    if (registers.queryLevel2) {
        text << ", sub-leaf: " << *registers.queryLevel2;
    }
    text << ", eax: " << registers.eax << ", ebx: " << registers.ebx << ", ecx: " << registers.ecx
         << ", edx: " << registers.edx << ")";
    return out << text.str();
}

CPUID::Registers::Encoded CPUID::Registers::encoded() const {
    Encoded fields{{"eax", eax}, {"ebx", ebx}, {"ecx", ecx}, {"edx", edx}, {"queryLevel1", queryLevel1}};
    if (queryLevel2) {
        fields.emplace("queryLevel2", *queryLevel2);
    }
    return fields;
}

std::optional<CPUID::Registers> CPUID::Registers::decoded(const Encoded& fields) {
    for (const char* name : {"eax", "ebx", "ecx", "edx", "queryLevel1"}) {
        if (!fields.contains(name)) {
            return std::nullopt;
        }
    }
    Registers result{fields.at("eax"), fields.at("ebx"),         fields.at("ecx"),
                     fields.at("edx"), fields.at("queryLevel1"), std::nullopt};
    if (const auto sub = fields.find("queryLevel2"); sub != fields.end()) {
        result.queryLevel2 = sub->second;
    }
    return result;
}

std::optional<CPUID::Registers> CPUID::Registers::from(std::uint32_t level1,
                                                       std::optional<std::uint32_t> extendedLevel2,
                                                       bool doNotRecoverFromCache) {
    return queryCache.with([&](std::vector<Registers>& queries) -> std::optional<Registers> {
        const auto found = std::ranges::find_if(queries, [&](const Registers& each) {
            return each.queryLevel1 == level1 && each.queryLevel2 == extendedLevel2;
        });
        if (found != queries.end() && (!doNotRecoverFromCache || Replay::isOn())) {
            return *found;
        }
        const std::optional<Registers> fresh = askProcessor(level1, extendedLevel2);
        if (fresh) {
            queries.push_back(*fresh);
        }
        return fresh;
    });
}

CPUID::Bits CPUID::queryAndReturnEAXBits(std::uint32_t level1, std::optional<std::uint32_t> extendedLevel2) {
    return queryAndReturnEAXBits(level1, extendedLevel2, 0, flagsLastBit);
}

CPUID::Bits CPUID::queryAndReturnEAXBits(std::uint32_t level1, std::optional<std::uint32_t> extendedLevel2,
                                         std::uint8_t firstBit, std::uint8_t lastBit) {
    if (firstBit > lastBit || lastBit > flagsLastBit) {
        return std::nullopt;
    }
    const std::optional<Registers> registers = Registers::from(level1, extendedLevel2);
    return registers ? Bits(bitsOf(registers->eax, firstBit, lastBit)) : std::nullopt;
}

CPUID::Bits CPUID::stepping() {
    return leaf1Bits(0, 3);
}
CPUID::Bits CPUID::model() {
    return leaf1Bits(4, 7);
}
CPUID::Bits CPUID::family() {
    return leaf1Bits(8, 11);
}
CPUID::Bits CPUID::type() {
    return leaf1Bits(12, 13);
}
CPUID::Bits CPUID::extModel() {
    return leaf1Bits(16, 19);
}
CPUID::Bits CPUID::extFamily() {
    return leaf1Bits(20, 27);
}

CPUID::Bits CPUID::standard_family() {
    const Bits base = family();
    return base == 15U ? Bits(*base + extFamily().value_or(0)) : base;
}

CPUID::Bits CPUID::standard_model() {
    const Bits base = model();
    const Bits baseFamily = family();
    const bool extended = baseFamily == 6U || baseFamily == 15U;
    return base && extended ? Bits(*base + (extModel().value_or(0) << 4U)) : base;
}

std::optional<std::string> CPUID::hypervisor() {
    const std::optional<Registers> name = Registers::from(0x40000000);
    return name ? std::optional(textIn({name->ebx, name->ecx, name->edx})) : std::nullopt;
}

std::optional<std::string> CPUID::brandString() {
    std::vector<std::uint32_t> words;
    for (const std::uint32_t leaf : {0x80000002U, 0x80000003U, 0x80000004U}) {
        const std::optional<Registers> part = Registers::from(leaf);
        if (!part) {
            return std::nullopt;
        }
        words.insert(words.end(), {part->eax, part->ebx, part->ecx, part->edx});
    }
    return textIn(words);
}

} // namespace vantor::SystemValues
