// SPDX-License-Identifier: MIT
#include "platform/linux/workload/ApplicationTable.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/linux/workload/ApplicationId.hpp"
#include "platform/linux/workload/ApplicationLeader.hpp"

namespace vantor::platform::linux {

namespace {

constexpr std::size_t longestName = 80;

/// "org.gnome.Nautilus" without a desktop entry reads "Nautilus".
std::string readable(const std::string& id) {
    const std::size_t dot = id.rfind('.');
    return dot == std::string::npos || dot + 1 == id.size() ? id : id.substr(dot + 1);
}

/// The unit that a group is: "pipewire" of "session.slice/pipewire.service".
std::string unitName(const std::string& path) {
    std::string name = path.substr(path.rfind('/') + 1);
    return name.substr(0, name.rfind('.'));
}

} // namespace

ApplicationUse& ApplicationTable::application(const std::string& id, const std::string& otherName,
                                              bool isService) {
    const std::string key = isService ? "\x01" : !id.empty() ? id : "\x02" + otherName;
    const auto [found, isNew] = m_table.try_emplace(key);
    ApplicationUse& use = found->second;
    if (isNew) {
        const std::optional<DesktopEntry> entry = id.empty() ? std::nullopt : m_entries.find(id);
        const std::string name = entry ? entry->name : id.empty() ? otherName : readable(id);
        use.id = printableText(id);
        use.name = isService ? "Session services" : printableText(name, longestName);
        use.icon = entry ? printableText(entry->icon, 4096) : "";
        use.isService = isService;
    }
    return use;
}

/// Takes its processes out of those that are given.
void ApplicationTable::addGroup(const GroupUse& group, std::map<int, ProcessStat>& processes) {
    const std::string id = applicationIdOf(group.path).value_or("");
    const bool isService = id.empty() && !group.path.starts_with("app.slice/");
    ApplicationUse& use = application(id, unitName(group.path), isService);
    use.memory += group.memory;
    use.kernel += group.kernel;
    use.swap += group.swap;
    use.processorTime += group.processorTime;
    for (const int number : group.processes) {
        if (auto process = processes.extract(number); !process.empty()) {
            use.processes.push_back({number, process.mapped().start, std::move(process.mapped().name)});
        }
    }
}

/// By parts only where somebody goes on asking: a single look would count nothing.
ProcessMemory ApplicationTable::memoryOf(int process, std::uint64_t start) {
    if (m_purpose == ListedFor::processorTime) {
        return {};
    }
    const ProcessMemory whole = m_processes.memory(process);
    return m_purpose == ListedFor::memory ? m_memory.of(process, start, whole) : whole;
}

/// The processes that share a group with others, such as a login session's.
void ApplicationTable::addLoose(const std::map<int, ProcessStat>& loose) {
    std::map<int, std::vector<int>> byLeader;
    for (const auto& [number, stat] : loose) {
        byLeader[applicationLeader(loose, number)].push_back(number);
    }
    for (const auto& [leader, members] : byLeader) {
        const std::string& program = m_processes.program(leader);
        std::string id;
        for (std::size_t i = 0; program == "bwrap" && id.empty() && i < members.size(); ++i) {
            id = flatpakOf(m_tree, members[i]); // the sandbox's own processes see it, its starter does not
        }
        ApplicationUse& use = application(id.empty() ? m_entries.idStarting(program) : id, program, false);
        for (const int number : members) {
            const ProcessStat& stat = loose.at(number);
            const ProcessMemory memory = memoryOf(number, stat.start);
            use.memory += memory.memory;
            use.swap += memory.swap;
            use.processorTime += stat.ticks * 1'000'000 / m_ticksPerSecond;
            use.processes.push_back({number, stat.start, stat.name});
        }
    }
}

std::vector<ApplicationUse> ApplicationTable::make(const std::vector<GroupUse>& groups) {
    // Where there are groups, most processes' memory is not asked for.
    const bool isOnce = m_purpose == ListedFor::memoryOnce && groups.empty();
    std::map<int, ProcessStat> processes = isOnce ? m_processes.readOnce() : m_processes.read();
    for (const GroupUse& group : groups) {
        addGroup(group, processes);
    }
    addLoose(processes);
    std::vector<ApplicationUse> uses;
    uses.reserve(m_table.size());
    for (auto& [key, use] : m_table) {
        uses.push_back(std::move(use));
    }
    return uses;
}

} // namespace vantor::platform::linux
