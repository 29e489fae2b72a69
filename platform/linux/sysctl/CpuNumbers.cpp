// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/CpuNumbers.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>

namespace vantor::platform::linux::sysctl {

namespace {

struct FamilyOfModels {
    std::uint32_t family;
    std::initializer_list<std::uint64_t> models;
};

/// Intel family 6 by the vendor's model numbers (SDM volume 4, table 2-1), with the platform's number of each
/// design, oldest first.
const std::array<FamilyOfModels, 13> intelFamilies{{{0x73D67300, {0x0E}},
                                                    {0x426F69EF, {0x0F, 0x16}},
                                                    {0x78EA4FBC, {0x17, 0x1D}},
                                                    {0x6B5A4CD2, {0x1A, 0x1E, 0x1F, 0x2E}},
                                                    {0x573B5EEC, {0x25, 0x2C, 0x2F}},
                                                    {0x5490B78C, {0x2A, 0x2D}},
                                                    {0x1F65E835, {0x3A, 0x3E}},
                                                    {0x10B282DC, {0x3C, 0x3F, 0x45, 0x46}},
                                                    {0x582ED09C, {0x3D, 0x47, 0x4F, 0x56}},
                                                    {0x37FC219F, {0x4E, 0x55, 0x5E}},
                                                    {0x0F817246, {0x8E, 0x9E}},
                                                    {0x38435547, {0x6A, 0x6C, 0x7D, 0x7E}},
                                                    {0x1CF8A03E, {0xA5, 0xA6}}}};

/// Part numbers (MIDR_EL1) of implementer 0x61 and the platform's number of the chip generation.
const std::array<FamilyOfModels, 2> armFamilies{
    {{0x1B588BB3, {0x22, 0x23, 0x24, 0x25, 0x28, 0x29}}, {0xDA33D83D, {0x32, 0x33, 0x34, 0x35, 0x38, 0x39}}}};

std::uint32_t familyOf(const auto& table, std::optional<std::uint64_t> model) {
    for (const FamilyOfModels& each : table) {
        if (model && std::ranges::find(each.models, *model) != each.models.end()) {
            return each.family;
        }
    }
    return 0;
}

/// Subtype 8 marks the processors since the 2013 design, told by the instructions that came with it.
CpuNumbers x86Numbers(std::string_view machine, const std::vector<CpuinfoBlock>& cpuinfo) {
    const std::string_view flags = firstField(cpuinfo, "flags");
    const auto hasFlag = [&](std::string_view flag) { return hasWord(flags, flag); };
    const auto since2013 = {"avx2", "bmi1", "bmi2", "fma", "movbe", "abm"};
    const bool intel6 =
        firstField(cpuinfo, "vendor_id") == "GenuineIntel" && firstField(cpuinfo, "cpu family") == "6";
    CpuNumbers result;
    result.is64Bit = machine == "x86_64" || hasFlag("lm");
    result.type = 7;
    result.subtype = !*result.is64Bit ? 3 : std::ranges::all_of(since2013, hasFlag) ? 8 : 4;
    result.family = intel6 ? familyOf(intelFamilies, numberFrom(firstField(cpuinfo, "model"))) : 0;
    return result;
}

/// 64-bit: subtype 2 with pointer authentication, else 1. 32-bit: 13, 9 or 6 for the architecture's version.
CpuNumbers armNumbers(std::string_view machine, const std::vector<CpuinfoBlock>& cpuinfo) {
    CpuNumbers result;
    const bool wide = machine.starts_with("aarch64") || machine == "arm64";
    const bool eight = machine.starts_with("armv8");
    result.is64Bit = wide || eight;
    result.type = wide ? 0x0100000C : 12;
    if (wide) {
        result.subtype = hasWord(firstField(cpuinfo, "Features"), "paca") ? 2 : 1;
    } else {
        result.subtype = eight ? 13 : machine.starts_with("armv7") ? 9 : machine.starts_with("armv6") ? 6 : 0;
    }
    const bool known = firstField(cpuinfo, "CPU implementer") == "0x61";
    result.family = known ? familyOf(armFamilies, hexadecimal(firstField(cpuinfo, "CPU part"))) : 0;
    return result;
}

CpuNumbers powerNumbers(std::string_view machine, const std::vector<CpuinfoBlock>& cpuinfo) {
    CpuNumbers result;
    const std::string_view name = firstField(cpuinfo, "cpu");
    result.is64Bit = machine.starts_with("ppc64");
    result.type = *result.is64Bit ? 0x01000012 : 18;
    result.subtype = 0;
    result.family = 0;
    if (name.starts_with("PPC970")) {
        result.subtype = 100;
        result.family = 0xED76D8AA;
    } else if (name.starts_with("74")) {
        result.subtype = 11;
        result.family = 0x77C184AE;
    } else if (name.starts_with("750") || name.starts_with("740")) {
        result.subtype = 9;
        result.family = 0xCEE41549;
    }
    return result;
}

} // namespace

CpuNumbers CpuNumbers::from(std::string_view machine, const std::vector<CpuinfoBlock>& cpuinfo) {
    if (machine == "x86_64" || (machine.size() == 4 && machine.front() == 'i' && machine.ends_with("86"))) {
        return x86Numbers(machine, cpuinfo);
    }
    if (machine.starts_with("aarch64") || machine.starts_with("arm")) {
        return armNumbers(machine, cpuinfo);
    }
    if (machine.starts_with("ppc")) {
        return powerNumbers(machine, cpuinfo);
    }
    return {};
}

} // namespace vantor::platform::linux::sysctl
