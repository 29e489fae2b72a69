// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/LinuxSysctlSource.hpp"

#include "platform/linux/figures/MemInfo.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/sysctl/CpuNumbers.hpp"
#include "platform/linux/sysctl/KernelText.hpp"
#include "platform/linux/sysctl/ProcSysKey.hpp"
#include "platform/linux/sysctl/ProcessorTopology.hpp"

#include <utility>

namespace vantor::platform::linux::sysctl {

namespace {

SysctlAnswer text(std::optional<std::string> found) {
    return found && !found->empty() ? SysctlAnswer(SysctlValue::ofText(*std::move(found))) : SysctlAnswer();
}

SysctlAnswer number4(std::optional<std::uint64_t> found) {
    return found ? SysctlAnswer(SysctlValue::of4(static_cast<std::uint32_t>(*found))) : SysctlAnswer();
}

SysctlAnswer number8(std::optional<std::uint64_t> found) {
    return found ? SysctlAnswer(SysctlValue::of8(*found)) : SysctlAnswer();
}

/// A count of nothing is one that could not be read.
std::optional<std::uint64_t> countOf(const CpuList& list) {
    return list.empty() ? std::nullopt : std::optional<std::uint64_t>(list.size());
}

std::optional<std::uint64_t> cacheSize(const ProcessorCaches& caches, std::string_view name) {
    return name == "l1icachesize"   ? caches.l1Instruction
           : name == "l1dcachesize" ? caches.l1Data
           : name == "l2cachesize"  ? caches.l2
                                    : std::nullopt;
}

} // namespace

LinuxSysctlSource::LinuxSysctlSource(std::string root, SystemCalls calls)
    : m_tree(std::move(root)), m_calls(std::move(calls)) {}

SysctlAnswer LinuxSysctlSource::read(std::string_view key) {
    SysctlAnswer answer;
    if (key.starts_with("hw.")) {
        answer = hardware(key.substr(3));
    } else if (key.starts_with("kern.")) {
        answer = kernel(key.substr(5));
    }
    return answer.error == ENOENT ? procSys(key) : answer;
}

SysctlAnswer LinuxSysctlSource::hardware(std::string_view name) const {
    if (name == "machine") {
        return text(m_calls.uname().machine);
    }
    if (name == "model") {
        return model();
    }
    if (name == "pagesize") {
        return number8(m_calls.pageSize());
    }
    if (name == "memsize") {
        return number8(parseMemInfo(m_tree.read("proc/meminfo").text).memTotal);
    }
    if (name.starts_with("cpu")) {
        return processorNumber(name);
    }
    return name.starts_with("perflevel") ? level(name.substr(9)) : counts(name);
}

SysctlAnswer LinuxSysctlSource::processorNumber(std::string_view name) const {
    const CpuNumbers numbers =
        CpuNumbers::from(m_calls.uname().machine, parseCpuinfo(m_tree.read("proc/cpuinfo").text));
    if (name == "cputype") {
        return number4(numbers.type);
    }
    if (name == "cpusubtype") {
        return number4(numbers.subtype);
    }
    if (name == "cpufamily") {
        return number4(numbers.family);
    }
    if (name == "cpusubfamily" && numbers.type) {
        return number4(0); // none is known for any processor that Linux tells of
    }
    return name == "cpu64bit_capable" ? number4(numbers.is64Bit) : SysctlAnswer();
}

SysctlAnswer LinuxSysctlSource::counts(std::string_view name) const {
    const ProcessorTopology topology(m_tree, m_calls.uname().machine);
    const PerformanceLevel all{topology.present(), topology.online()};
    if (name == "ncpu") {
        return number4(countOf(topology.possible()));
    }
    if (name == "activecpu" || name == "logicalcpu") {
        return number4(countOf(topology.online()));
    }
    if (name == "logicalcpu_max") {
        return number4(countOf(topology.present()));
    }
    if (name == "physicalcpu") {
        return all.online.empty() ? SysctlAnswer() : number4(topology.cores(all.online));
    }
    if (name == "physicalcpu_max") {
        return all.online.empty() ? SysctlAnswer() : number4(topology.coresInAll(all));
    }
    const std::vector<PerformanceLevel> levels = topology.levels();
    if (levels.empty()) {
        return {};
    }
    if (name == "nperflevels") {
        return number4(levels.size());
    }
    const auto size = cacheSize(ProcessorCaches::read(m_tree, levels.front()), name);
    return size ? SysctlAnswer(SysctlValue::of8(*size)) : SysctlAnswer();
}

/// `name` is what follows "hw.perflevel": the level's number, a point and the entry. Every number under here
/// has 4 bytes.
SysctlAnswer LinuxSysctlSource::level(std::string_view name) const {
    const std::size_t point = name.find('.');
    const auto number = numberFrom(name.substr(0, point));
    const ProcessorTopology topology(m_tree, m_calls.uname().machine);
    const std::vector<PerformanceLevel> levels = topology.levels();
    if (point == std::string_view::npos || !number || *number >= levels.size()) {
        return {};
    }
    name.remove_prefix(point + 1);
    const PerformanceLevel& level = levels[*number];
    if (name == "logicalcpu") {
        return number4(level.online.size());
    }
    if (name == "logicalcpu_max") {
        return number4(level.present.size());
    }
    if (name == "physicalcpu") {
        return number4(topology.cores(level.online));
    }
    if (name == "physicalcpu_max") {
        return number4(topology.coresInAll(level));
    }
    const ProcessorCaches caches = ProcessorCaches::read(m_tree, level);
    return name == "cpusperl2" ? number4(caches.processorsPerL2) : number4(cacheSize(caches, name));
}

/// The firmware's name of the machine: DMI on PCs, the device tree elsewhere.
SysctlAnswer LinuxSysctlSource::model() const {
    for (const char* path : {"sys/class/dmi/id/product_name", "sys/firmware/devicetree/base/model"}) {
        if (SysctlAnswer found = text(m_tree.line(path)); found.error == 0) {
            return found;
        }
    }
    return {};
}

SysctlAnswer LinuxSysctlSource::kernel(std::string_view name) const {
    using Names = SystemCalls::Names;
    constexpr std::pair<std::string_view, std::string Names::*> named[] = {{"ostype", &Names::sysname},
                                                                           {"hostname", &Names::nodename},
                                                                           {"osrelease", &Names::release},
                                                                           {"version", &Names::version}};
    for (const auto& [key, member] : named) {
        if (name == key) {
            const auto file = m_tree.line(std::string("proc/sys/kernel/").append(name));
            return text(file ? *file : m_calls.uname().*member);
        }
    }
    if (name == "bootargs") {
        return text(m_tree.line("proc/cmdline"));
    }
    if (name == "osproductversion" || name == "osproductversioncompat") {
        return osRelease("VERSION_ID");
    }
    if (name == "osreleasetype") {
        return osRelease("RELEASE_TYPE");
    }
    return name == "osrevision" ? osRelease("BUILD_ID") : SysctlAnswer();
}

SysctlAnswer LinuxSysctlSource::osRelease(std::string_view field) const {
    KernelTree::Content content = m_tree.read("etc/os-release");
    if (content.error != 0) {
        content = m_tree.read("usr/lib/os-release");
    }
    return text(parseOsRelease(content.text, field));
}

SysctlAnswer LinuxSysctlSource::procSys(std::string_view key) const {
    const std::optional<std::string> path = procSysPath(key);
    if (!path) {
        return {};
    }
    KernelTree::Content content = m_tree.read("proc/sys/" + *path);
    if (content.error != 0) {
        return SysctlAnswer::failed(content.error == ENOTDIR ? ENOENT : content.error);
    }
    return procSysValue(std::move(content.text));
}

} // namespace vantor::platform::linux::sysctl
