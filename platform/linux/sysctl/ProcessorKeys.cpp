// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/CpuNumbers.hpp"
#include "platform/linux/sysctl/NamedKeys.hpp"
#include "platform/linux/sysctl/ProcessorName.hpp"

namespace vantor::platform::linux::sysctl {

namespace {

std::vector<CpuinfoBlock> cpuinfo(const Sources& from) {
    return parseCpuinfo(from.tree.read("proc/cpuinfo").text);
}

CpuNumbers numbers(const Sources& from) {
    return CpuNumbers::from(from.calls.uname().machine, cpuinfo(from));
}

/// A count of nothing is one that could not be read.
SysctlAnswer count(const CpuList& list) {
    return list.empty() ? SysctlAnswer() : number4(list.size());
}

SysctlAnswer coresInAll(const Sources& from) {
    const ProcessorTopology topology = from.topology();
    return topology.online().empty() ? SysctlAnswer()
                                     : number4(topology.coresInAll({topology.present(), topology.online()}));
}

SysctlAnswer cores(const Sources& from) {
    const ProcessorTopology topology = from.topology();
    return topology.online().empty() ? SysctlAnswer() : number4(topology.cores(topology.online()));
}

SysctlAnswer levelCount(const Sources& from) {
    const auto levels = from.topology().levels();
    return levels.empty() ? SysctlAnswer() : number4(levels.size());
}

/// Of the fastest level.
ProcessorCaches caches(const Sources& from) {
    const auto levels = from.topology().levels();
    return levels.empty() ? ProcessorCaches() : ProcessorCaches::read(from.tree, levels.front());
}

/// The processors that are online, and how many of them share a cache of the first level, the second and the
/// third, as the platform's own tool prints this key.
SysctlAnswer cacheSharing(const Sources& from) {
    const std::size_t online = from.topology().online().size();
    const auto sharing = caches(from).sharing;
    if (online == 0 || sharing.front() == 0) {
        return {};
    }
    std::string list = std::to_string(online);
    for (const std::size_t each : sharing) {
        list += " " + std::to_string(each);
    }
    return textAnswer(list);
}

using From = const Sources&;

constexpr NamedKey keys[] = {
    {"hw.activecpu", [](From from) { return count(from.topology().online()); }},
    {"hw.cacheconfig", cacheSharing},
    {"hw.cpu64bit_capable", [](From from) { return number4(numbers(from).is64Bit); }},
    {"hw.cpufamily", [](From from) { return number4(numbers(from).family); }},
    {"hw.cpufrequency", [](From from) { return number8(from.topology().frequency(cpuinfo(from))); }},
    // None is known for any processor that Linux tells of.
    {"hw.cpusubfamily", [](From from) { return numbers(from).type ? number4(0) : SysctlAnswer(); }},
    {"hw.cpusubtype", [](From from) { return number4(numbers(from).subtype); }},
    {"hw.cputype", [](From from) { return number4(numbers(from).type); }},
    {"hw.l1dcachesize", [](From from) { return number8(caches(from).data[0]); }},
    {"hw.l1icachesize", [](From from) { return number8(caches(from).l1Instruction); }},
    {"hw.l2cachesize", [](From from) { return number8(caches(from).data[1]); }},
    {"hw.l3cachesize", [](From from) { return number8(caches(from).data[2]); }},
    {"hw.logicalcpu", [](From from) { return count(from.topology().online()); }},
    {"hw.logicalcpu_max", [](From from) { return count(from.topology().present()); }},
    {"hw.ncpu", [](From from) { return count(from.topology().possible()); }},
    {"hw.nperflevels", levelCount},
    {"hw.packages", [](From from) { return number4(from.topology().packages()); }},
    {"hw.physicalcpu", cores},
    {"hw.physicalcpu_max", coresInAll},
    {"machdep.cpu.brand_string",
     [](From from) { return textAnswer(processorName(cpuinfo(from), from.topology().levels())); }},
};

using Topology = const ProcessorTopology&;
using Level = const PerformanceLevel&;

ProcessorCaches cachesOf(From from, Level level) {
    return ProcessorCaches::read(from.tree, level);
}

constexpr LevelKey keysOfLevels[] = {
    {"cpusperl2",
     [](From from, Topology, Level level) {
         const std::size_t sharing = cachesOf(from, level).sharing[1];
         return sharing == 0 ? SysctlAnswer() : number4(sharing);
     }},
    {"l1dcachesize", [](From from, Topology, Level level) { return number4(cachesOf(from, level).data[0]); }},
    {"l1icachesize",
     [](From from, Topology, Level level) { return number4(cachesOf(from, level).l1Instruction); }},
    {"l2cachesize", [](From from, Topology, Level level) { return number4(cachesOf(from, level).data[1]); }},
    {"logicalcpu", [](From, Topology, Level level) { return number4(level.online.size()); }},
    {"logicalcpu_max", [](From, Topology, Level level) { return number4(level.present.size()); }},
    {"physicalcpu", [](From, Topology all, Level level) { return number4(all.cores(level.online)); }},
    {"physicalcpu_max", [](From, Topology all, Level level) { return number4(all.coresInAll(level)); }},
};

} // namespace

std::span<const NamedKey> processorKeys() {
    return keys;
}

std::span<const LevelKey> levelKeys() {
    return keysOfLevels;
}

} // namespace vantor::platform::linux::sysctl
