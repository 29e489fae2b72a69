// SPDX-License-Identifier: MIT
#include "platform/linux/workload/GroupReader.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/workload/WorkText.hpp"

#include <fcntl.h>
#include <sys/stat.h>

#include <optional>

namespace vantor::platform::linux {

namespace {

constexpr std::size_t deepest = 8, mostGroups = 4096, mostKept = 80;

} // namespace

/// What is in a group's folder; absent where it holds no processes.
std::optional<GroupUse> GroupReader::groupAt(const std::string& path) {
    const std::string folder = m_tree.path(managerFolder(m_user) + '/' + path);
    Files& files = m_files[path];
    files.round = m_round;
    const bool mayStay = m_isLive && m_files.size() <= mostKept;
    const auto read = [&](KeptFile& file, const char* name) {
        return file.read(AT_FDCWD, folder + name, m_buffer, mayStay);
    };
    GroupUse group;
    group.path = path;
    group.processes = parseProcessNumbers(read(files.processes, "/cgroup.procs"));
    const std::string_view memory =
        group.processes.empty() ? std::string_view() : read(files.memory, "/memory.stat");
    const std::optional<std::uint64_t> anonymous = statNumber(memory, "anon");
    if (!anonymous) {
        return std::nullopt;
    }
    group.memory = *anonymous + statNumber(memory, "shmem").value_or(0);
    group.kernel = statNumber(memory, "kernel").value_or(0);
    group.inactive = statNumber(memory, "inactive_anon").value_or(0);
    std::string_view swap = read(files.swap, "/memory.swap.current");
    const std::optional<Line> line = takeLine(swap);
    group.swap = line ? numberFrom(line->text).value_or(0) : 0;
    group.processorTime = statNumber(read(files.processor, "/cpu.stat"), "usage_usec").value_or(0);
    return group;
}

/// Whether a path is a group's. A folder without another one in it has two links on most file systems, its
/// name and its own ".": its sixty files need not be listed.
bool GroupReader::visit(const std::string& path, std::size_t depth) {
    const std::string whole = m_tree.path(managerFolder(m_user) + (path.empty() ? "" : "/") + path);
    struct stat about {};
    if (::lstat(whole.c_str(), &about) != 0 || !S_ISDIR(about.st_mode)) {
        return false;
    }
    const std::size_t place = m_groups.size();
    std::optional<GroupUse> group = path.empty() ? std::nullopt : groupAt(path);
    const bool isListed = group.has_value();
    if (isListed) {
        m_groups.push_back(*std::move(group));
    }
    if (about.st_nlink == 2 || depth >= deepest) {
        return true;
    }
    Folder folder(whole);
    while (const char* const name = folder.next()) {
        const bool mayBeGroup = folder.mayBeFolder() && m_groups.size() < mostGroups;
        if (mayBeGroup && visit(path.empty() ? name : path + '/' + name, depth + 1) && isListed) {
            m_groups[place].isLeaf = false;
        }
    }
    return true;
}

std::vector<GroupUse> GroupReader::read() {
    ++m_round;
    m_groups.clear();
    if (m_tree.exists("sys/fs/cgroup/cgroup.controllers")) {
        m_isLive = isMadeByTheKernel(m_tree.path(managerFolder(m_user)));
        visit("", 0);
    }
    std::erase_if(m_files, [this](const auto& each) { return each.second.round != m_round; });
    return std::move(m_groups);
}

std::string managerFolder(uid_t user) {
    const std::string id = std::to_string(user);
    return std::string("sys/fs/cgroup/user.slice/user-").append(id) + ".slice/user@" + id + ".service";
}

/// /proc/PID/cgroup has the line "0::/PATH" for the second version of groups (cgroups(7)).
std::string groupOf(const KernelTree& tree, uid_t user, const std::string& process) {
    const std::string top = managerFolder(user).substr(std::string_view("sys/fs/cgroup").size());
    const std::string start = "0::" + top + '/';
    const std::string text = tree.read("proc/" + process + "/cgroup").text;
    std::string_view rest = text;
    while (const std::optional<Line> line = takeLine(rest)) {
        if (line->text.starts_with(start)) {
            return std::string(line->text.substr(start.size()));
        }
    }
    return {};
}

std::optional<GroupUse> readGroup(const KernelTree& tree, uid_t user, const std::string& path) {
    return GroupReader(tree, user).groupAt(path);
}

} // namespace vantor::platform::linux
