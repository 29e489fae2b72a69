// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/ProcessorTopology.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace vantor::platform::linux::sysctl {

namespace {

constexpr const char* cpuFolder = "sys/devices/system/cpu/";

std::string folderOf(unsigned processor) {
    return std::string(cpuFolder) + "cpu" + std::to_string(processor) + "/";
}

std::optional<CpuList> readList(const KernelTree& tree, std::string_view path) {
    const auto text = tree.line(path);
    return text ? parseCpuList(*text) : std::nullopt;
}

CpuList listedIn(const std::vector<CpuinfoBlock>& cpuinfo) {
    CpuList result;
    for (const CpuinfoBlock& block : cpuinfo) {
        const auto found = block.find("processor");
        const auto number = found != block.end() ? numberFrom(found->second) : std::nullopt;
        if (number) {
            result.push_back(static_cast<unsigned>(*number));
        }
    }
    return result;
}

CpuList common(const CpuList& a, const CpuList& b) {
    CpuList result;
    std::ranges::set_intersection(a, b, std::back_inserter(result));
    return result;
}

} // namespace

ProcessorTopology::ProcessorTopology(const KernelTree& tree, std::string_view machine)
    : m_tree(tree), m_isX86(machine == "x86_64" || (machine.size() == 4 && machine.ends_with("86"))) {
    const auto online = readList(tree, std::string(cpuFolder) + "online");
    if (online && !online->empty()) {
        m_online = *online;
    } else {
        m_cpuinfo = parseCpuinfo(tree.read("proc/cpuinfo").text);
        m_online = listedIn(m_cpuinfo);
    }
    m_present = readList(tree, std::string(cpuFolder) + "present").value_or(m_online);
    m_possible = readList(tree, std::string(cpuFolder) + "possible").value_or(m_present);
}

std::vector<PerformanceLevel> ProcessorTopology::levels() const {
    std::vector<PerformanceLevel> found = m_isX86 ? levelsByKind() : levelsByCapacity();
    if (found.empty() && !m_online.empty()) {
        found.push_back({m_present, m_online});
    }
    return found;
}

/// The performance counters of each kind of core list the processors that have them, online ones only.
std::vector<PerformanceLevel> ProcessorTopology::levelsByKind() const {
    std::vector<PerformanceLevel> result;
    for (const char* kind : {"cpu_core", "cpu_atom", "cpu_lowpower"}) {
        const auto list = readList(m_tree, std::string("sys/devices/") + kind + "/cpus");
        const CpuList online = common(list.value_or(CpuList{}), m_online);
        if (!online.empty()) {
            result.push_back({online, online});
        }
    }
    return result;
}

/// `cpu_capacity` is a processor's speed against the fastest one, which has 1024.
std::optional<std::uint64_t> ProcessorTopology::capacityOf(unsigned processor) const {
    const auto text = m_tree.line(folderOf(processor) + "cpu_capacity");
    return text ? numberFrom(*text) : std::nullopt;
}

/// Since Linux 6.8 a processor that is offline has no `cpu_capacity`. It is as fast as the online ones whose
/// frequency goes with its own; one that no online processor is tied to stays out of the levels.
std::vector<PerformanceLevel> ProcessorTopology::levelsByCapacity() const {
    std::map<unsigned, std::uint64_t> capacities;
    std::map<unsigned, std::uint64_t> tied;
    for (const unsigned processor : m_present) {
        const bool online = std::ranges::binary_search(m_online, processor);
        const auto capacity = capacityOf(processor);
        if (capacity) {
            capacities.emplace(processor, *capacity);
        } else if (online) {
            return {}; // a machine that tells of some only tells nothing
        }
        const std::string related =
            online ? m_tree.line(folderOf(processor) + "cpufreq/related_cpus").value_or("") : "";
        for (std::string_view rest = related; const auto other = takeNumber(rest);) { // "4 5 6 7"
            tied.emplace(static_cast<unsigned>(*other), *capacity);
        }
    }
    std::map<std::uint64_t, CpuList, std::greater<>> byCapacity;
    capacities.merge(tied); // a capacity of its own goes first
    for (const unsigned processor : m_present) {
        if (const auto found = capacities.find(processor); found != capacities.end()) {
            byCapacity[found->second].push_back(processor);
        }
    }
    std::vector<PerformanceLevel> result;
    result.reserve(byCapacity.size());
    for (const auto& [capacity, list] : byCapacity) {
        result.push_back({list, common(list, m_online)});
    }
    return result;
}

/// A name for the core of a processor that is online; empty where it cannot be told.
std::string ProcessorTopology::coreOf(unsigned processor) const {
    const std::string topology = folderOf(processor) + "topology/";
    for (const char* siblings : {"core_cpus_list", "thread_siblings_list"}) { // the second before Linux 5.3
        if (auto list = m_tree.line(topology + siblings)) {
            return *std::move(list);
        }
    }
    for (const CpuinfoBlock& block : m_cpuinfo) {
        const auto number = block.find("processor");
        if (number != block.end() && number->second == std::to_string(processor) &&
            block.contains("core id")) {
            const auto package = block.find("physical id");
            return (package != block.end() ? package->second : "0") + ":" + block.at("core id");
        }
    }
    return {};
}

std::optional<unsigned> ProcessorTopology::cores(const CpuList& online) const {
    std::set<std::string> names;
    for (const unsigned processor : online) {
        names.insert(coreOf(processor));
    }
    if (names.contains(std::string())) {
        return std::nullopt;
    }
    return static_cast<unsigned>(names.size());
}

std::optional<unsigned> ProcessorTopology::coresInAll(const PerformanceLevel& level) const {
    const std::optional<unsigned> inUse = cores(level.online);
    const auto offline =
        static_cast<unsigned>(level.present.size() - common(level.present, level.online).size());
    if (!inUse || offline == 0) {
        return inUse;
    }
    const std::string threads = m_tree.line(std::string(cpuFolder) + "smt/control").value_or("");
    if (threads == "off" || threads == "forceoff") {
        return inUse;
    }
    const auto perCore = *inUse == 0 ? 1 : std::max<std::size_t>(1, level.online.size() / *inUse);
    return *inUse + offline / static_cast<unsigned>(perCore);
}

std::optional<unsigned> ProcessorTopology::packages() const {
    std::set<std::string, std::less<>> ids;
    for (const CpuinfoBlock& block : m_cpuinfo) {
        ids.emplace(fieldOf(block, "physical id"));
    }
    for (std::size_t i = 0; m_cpuinfo.empty() && i < m_online.size(); ++i) {
        ids.insert(m_tree.line(folderOf(m_online[i]) + "topology/physical_package_id").value_or(""));
    }
    const bool known = !ids.empty() && !ids.contains("") && !ids.contains("-1"); // the kernel's "not known"
    return known ? std::optional(static_cast<unsigned>(ids.size())) : std::nullopt;
}

std::optional<std::uint64_t> ProcessorTopology::frequency(const std::vector<CpuinfoBlock>& cpuinfo) const {
    std::optional<std::uint64_t> highest;
    for (const unsigned processor : m_online) {
        const auto text = m_tree.line(folderOf(processor) + "cpufreq/cpuinfo_max_freq");
        const auto kilohertz = text ? numberFrom(*text) : std::nullopt;
        if (kilohertz && *kilohertz < 1'000'000'000) {
            highest = std::max(highest.value_or(0), *kilohertz * 1000);
        }
    }
    for (const char* name : {"cpu MHz", "clock"}) { // x86; PowerPC
        for (std::size_t i = 0; !highest && i < cpuinfo.size(); ++i) {
            highest = parseMegahertz(fieldOf(cpuinfo[i], name));
        }
    }
    return highest;
}

ProcessorCaches ProcessorCaches::read(const KernelTree& tree, const PerformanceLevel& level) {
    ProcessorCaches result;
    const std::string caches = level.online.empty() ? "" : folderOf(level.online.front()) + "cache/index";
    for (int index = 0; !caches.empty(); ++index) {
        const std::string cache = caches + std::to_string(index) + "/";
        const auto levelText = tree.line(cache + "level");
        const auto number = levelText ? numberFrom(*levelText) : std::nullopt;
        if (!number) {
            break;
        }
        const std::string type = tree.line(cache + "type").value_or("");
        const auto sizeText = tree.line(cache + "size");
        const auto size = sizeText ? parseCacheSize(*sizeText) : std::nullopt;
        if (*number == 1 && type != "Data") {
            result.l1Instruction = size;
        }
        if (*number >= 1 && *number <= 3 && type != "Instruction") {
            result.data.at(*number - 1) = size;
            result.sharing.at(*number - 1) =
                readList(tree, cache + "shared_cpu_list").value_or(CpuList{}).size();
        }
    }
    return result;
}

} // namespace vantor::platform::linux::sysctl
