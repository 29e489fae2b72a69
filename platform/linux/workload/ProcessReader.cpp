// SPDX-License-Identifier: MIT
#include "platform/linux/workload/ProcessReader.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>

namespace vantor::platform::linux {

namespace {

std::string under(int process, std::string_view file) {
    return "proc/" + std::to_string(process) + std::string(file);
}

} // namespace

std::map<int, ProcessStat> readProcesses(const KernelTree& tree, uid_t user) {
    std::map<int, ProcessStat> processes;
    Folder folder(tree.path("proc"));
    while (const char* const name = folder.next()) {
        const std::optional<std::uint64_t> number = numberFrom(name);
        struct stat about {};
        if (!number || *number > INT_MAX ||
            ::fstatat(folder.number(), name, &about, AT_SYMLINK_NOFOLLOW) != 0 || about.st_uid != user) {
            continue;
        }
        const int process = static_cast<int>(*number);
        std::optional<ProcessStat> stat = parseProcessStat(tree.read(under(process, "/stat")).text);
        if (stat && stat->session != 0) { // a kernel thread is in none
            processes.emplace(process, std::move(*stat));
        }
    }
    return processes;
}

ProcessMemory readProcessMemory(const KernelTree& tree, int process) {
    return parseProcessMemory(tree.read(under(process, "/status")).text);
}

std::string programOf(const KernelTree& tree, int process, const ProcessStat& stat) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length =
        ::readlink(tree.path(under(process, "/exe")).c_str(), target.data(), target.size());
    std::string_view path(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    constexpr std::string_view replaced = " (deleted)"; // by a newer version, say
    if (path.ends_with(replaced)) {
        path.remove_suffix(replaced.size());
    }
    path = path.substr(path.rfind('/') + 1);
    return path.empty() ? stat.name : std::string(path);
}

std::string flatpakOf(const KernelTree& tree, int process) {
    const std::string info = tree.read(under(process, "/root/.flatpak-info")).text;
    std::string_view rest = info;
    bool isInside = false;
    while (const std::optional<Line> line = takeLine(rest)) {
        if (line->text.starts_with('[')) {
            isInside = line->text == "[Application]";
        } else if (isInside && line->text.starts_with("name=")) {
            return std::string(line->text.substr(std::string_view("name=").size()));
        }
    }
    return {};
}

int applicationLeader(const std::map<int, ProcessStat>& processes, int process) {
    auto leader = processes.find(process);
    for (std::size_t steps = 0; leader != processes.end() && steps < processes.size(); ++steps) {
        const auto parent = processes.find(leader->second.parent);
        if (parent == processes.end() || parent->second.session == parent->first) {
            return leader->first;
        }
        leader = parent;
    }
    return process;
}

} // namespace vantor::platform::linux
