// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/ProcessorName.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace vantor::platform::linux::sysctl {

namespace {

struct Design {
    std::uint64_t part;
    std::string_view name;
};

/// By the part number in MIDR_EL1, which each design's reference manual gives. 0x41 is Arm itself.
constexpr Design armDesigns[] = {
    {0xB02, "ARM11 MPCore"},  {0xB36, "ARM1136"},      {0xB56, "ARM1156"},     {0xB76, "ARM1176"},
    {0xC05, "Cortex-A5"},     {0xC07, "Cortex-A7"},    {0xC08, "Cortex-A8"},   {0xC09, "Cortex-A9"},
    {0xC0D, "Cortex-A17"},    {0xC0E, "Cortex-A17"},   {0xC0F, "Cortex-A15"},  {0xD01, "Cortex-A32"},
    {0xD02, "Cortex-A34"},    {0xD03, "Cortex-A53"},   {0xD04, "Cortex-A35"},  {0xD05, "Cortex-A55"},
    {0xD06, "Cortex-A65"},    {0xD07, "Cortex-A57"},   {0xD08, "Cortex-A72"},  {0xD09, "Cortex-A73"},
    {0xD0A, "Cortex-A75"},    {0xD0B, "Cortex-A76"},   {0xD0C, "Neoverse-N1"}, {0xD0D, "Cortex-A77"},
    {0xD0E, "Cortex-A76AE"},  {0xD13, "Cortex-R52"},   {0xD40, "Neoverse-V1"}, {0xD41, "Cortex-A78"},
    {0xD42, "Cortex-A78AE"},  {0xD43, "Cortex-A65AE"}, {0xD44, "Cortex-X1"},   {0xD46, "Cortex-A510"},
    {0xD47, "Cortex-A710"},   {0xD48, "Cortex-X2"},    {0xD49, "Neoverse-N2"}, {0xD4A, "Neoverse-E1"},
    {0xD4B, "Cortex-A78C"},   {0xD4C, "Cortex-X1C"},   {0xD4D, "Cortex-A715"}, {0xD4E, "Cortex-X3"},
    {0xD4F, "Neoverse-V2"},   {0xD80, "Cortex-A520"},  {0xD81, "Cortex-A720"}, {0xD82, "Cortex-X4"},
    {0xD83, "Neoverse-V3AE"}, {0xD84, "Neoverse-V3"},  {0xD85, "Cortex-X925"}, {0xD87, "Cortex-A725"},
    {0xD8E, "Neoverse-N3"}};

/// 0x51: a phone maker's variants of Arm's.
constexpr Design phoneDesigns[] = {{0x800, "Kryo 2xx Gold"}, {0x801, "Kryo 2xx Silver"},
                                   {0x802, "Kryo 3xx Gold"}, {0x803, "Kryo 3xx Silver"},
                                   {0x804, "Kryo 4xx Gold"}, {0x805, "Kryo 4xx Silver"}};

std::string_view nameOf(const auto& designs, std::uint64_t part) {
    const auto* const found = std::ranges::find(designs, part, &Design::part);
    return found != std::ranges::end(designs) ? found->name : std::string_view();
}

std::string_view designOf(const CpuinfoBlock& block) {
    const auto part = hexadecimal(fieldOf(block, "CPU part")).value_or(0);
    const std::string_view implementer = fieldOf(block, "CPU implementer");
    return implementer == "0x41"   ? nameOf(armDesigns, part)
           : implementer == "0x51" ? nameOf(phoneDesigns, part)
                                   : std::string_view();
}

/// The processors of a level are of one design on every machine so far.
std::string_view designOf(const std::vector<CpuinfoBlock>& cpuinfo, const PerformanceLevel& level) {
    for (const CpuinfoBlock& block : cpuinfo) {
        const auto number = numberFrom(fieldOf(block, "processor"));
        if (number && std::ranges::find(level.online, *number) != level.online.end()) {
            return designOf(block);
        }
    }
    return {};
}

} // namespace

std::optional<std::string> processorName(const std::vector<CpuinfoBlock>& cpuinfo,
                                         const std::vector<PerformanceLevel>& levels) {
    std::string designs;
    std::string_view last;
    for (const PerformanceLevel& level : levels) {
        const std::string_view design = designOf(cpuinfo, level);
        if (!design.empty() && design != last) {
            designs.append(designs.empty() ? "" : " + ").append(design);
            last = design;
        }
    }
    if (!designs.empty()) {
        return designs;
    }
    // x86, 32-bit ARM and LoongArch; MIPS; PowerPC ("POWER9, altivec supported"); RISC-V
    for (const char* name : {"model name", "Model Name", "cpu model", "cpu", "uarch"}) {
        if (std::string_view found = firstField(cpuinfo, name); !found.empty()) {
            return std::string(std::string_view(name) == "cpu" ? takeUntil(found, ',') : found);
        }
    }
    return std::nullopt;
}

} // namespace vantor::platform::linux::sysctl
