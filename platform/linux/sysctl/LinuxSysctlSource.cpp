// SPDX-License-Identifier: MIT
#include "platform/linux/sysctl/LinuxSysctlSource.hpp"

#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/sysctl/ProcSysKey.hpp"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

namespace vantor::platform::linux::sysctl {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view levelPrefix = "hw.perflevel";
constexpr std::string_view filesRoot = "proc/sys/";

bool isAtOrBelow(std::string_view key, std::string_view name) {
    return name.empty() || (key.starts_with(name) && (key.size() == name.size() || key[name.size()] == '.'));
}

/// A file's path below /proc/sys and the path of everything in a folder.
std::vector<std::string> filesAtOrBelow(const std::string& root, const std::string& path) {
    std::vector<std::string> found;
    std::error_code error;
    if (fs::is_regular_file(root + path, error)) {
        found.push_back(path);
    }
    const auto options = fs::directory_options::skip_permission_denied;
    fs::recursive_directory_iterator entry(root + path, options, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        std::error_code gone;
        if (entry->is_regular_file(gone)) {
            found.push_back(entry->path().string().substr(root.size()));
        }
    }
    return found;
}

} // namespace

SysctlAnswer textAnswer(std::optional<std::string> found) {
    return found && !found->empty() ? SysctlAnswer(SysctlValue::ofText(*std::move(found))) : SysctlAnswer();
}

SysctlAnswer number4(std::optional<std::uint64_t> found) {
    return found ? SysctlAnswer(SysctlValue::of4(static_cast<std::uint32_t>(*found))) : SysctlAnswer();
}

SysctlAnswer number8(std::optional<std::uint64_t> found) {
    return found ? SysctlAnswer(SysctlValue::of8(*found)) : SysctlAnswer();
}

LinuxSysctlSource::LinuxSysctlSource(std::string root, SystemCalls calls)
    : m_tree(std::move(root)), m_calls(std::move(calls)) {}

SysctlAnswer LinuxSysctlSource::read(std::string_view key) {
    SysctlAnswer answer;
    for (const auto& table : {processorKeys(), systemKeys()}) {
        const auto found = std::ranges::find(table, key, &NamedKey::name);
        answer = found != table.end() ? found->read({m_tree, m_calls}) : std::move(answer);
    }
    if (key.starts_with(levelPrefix)) {
        answer = level(key.substr(levelPrefix.size()));
    }
    return answer.error == ENOENT ? procSys(key) : answer;
}

/// `name` is what follows "hw.perflevel": the level's number, a point and the entry.
SysctlAnswer LinuxSysctlSource::level(std::string_view name) const {
    const auto number = numberFrom(takeUntil(name, '.'));
    const auto entry = std::ranges::find(levelKeys(), name, &LevelKey::name);
    if (!number || entry == levelKeys().end()) {
        return {};
    }
    const Sources sources{m_tree, m_calls};
    const ProcessorTopology topology = sources.topology();
    const std::vector<PerformanceLevel> levels = topology.levels();
    return *number < levels.size() ? entry->read(sources, topology, levels[static_cast<std::size_t>(*number)])
                                   : SysctlAnswer();
}

SysctlAnswer LinuxSysctlSource::procSys(std::string_view key) const {
    const std::optional<std::string> path = procSysPath(key);
    if (!path) {
        return {};
    }
    KernelTree::Content content = m_tree.read(std::string(filesRoot) + *path);
    if (content.error != 0) {
        return SysctlAnswer::failed(content.error == ENOTDIR ? ENOENT : content.error);
    }
    return procSysValue(std::move(content.text));
}

std::vector<std::string> LinuxSysctlSource::keys(std::string_view name) {
    std::vector<std::string> result;
    for (const auto& table : {processorKeys(), systemKeys()}) {
        for (const NamedKey& key : table) {
            result.emplace_back(key.name);
        }
    }
    const std::size_t levels = Sources{m_tree, m_calls}.topology().levels().size();
    for (std::size_t level = 0; level < levels; ++level) {
        for (const LevelKey& key : levelKeys()) {
            result.push_back(std::string(levelPrefix) + std::to_string(level) + "." + std::string(key.name));
        }
    }
    std::erase_if(result, [&](const std::string& key) { return !isAtOrBelow(key, name); });
    if (const auto path = name.empty() ? std::optional(std::string()) : procSysPath(name)) {
        for (const std::string& file : filesAtOrBelow(m_tree.path(filesRoot), *path)) {
            result.push_back(procSysKey(file));
        }
    }
    std::ranges::sort(result);
    return result;
}

} // namespace vantor::platform::linux::sysctl
