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

constexpr std::size_t deepest = 8, mostGroups = 4096;

/// What is in a group's folder; absent where it holds no processes.
std::optional<GroupUse> groupAt(const KernelTree& tree, const std::string& folder, const std::string& path) {
    std::vector<int> processes = parseProcessNumbers(tree.read(folder + "/cgroup.procs").text);
    const std::string stat = processes.empty() ? std::string() : tree.read(folder + "/memory.stat").text;
    const std::optional<std::uint64_t> anonymous = statNumber(stat, "anon");
    if (!anonymous) {
        return std::nullopt;
    }
    const std::optional<std::string> swap = tree.line(folder + "/memory.swap.current");
    return GroupUse{.path = path,
                    .memory = *anonymous + statNumber(stat, "shmem").value_or(0),
                    .kernel = statNumber(stat, "kernel").value_or(0),
                    .inactive = statNumber(stat, "inactive_anon").value_or(0),
                    .swap = swap ? numberFrom(*swap).value_or(0) : 0,
                    .processorTime =
                        statNumber(tree.read(folder + "/cpu.stat").text, "usage_usec").value_or(0),
                    .processes = std::move(processes)};
}

class GroupWalk {
public:
    GroupWalk(const KernelTree& tree, std::string top) : m_tree(tree), m_top(std::move(top)) {}

    std::vector<GroupUse> walk() {
        visit("", 0);
        return std::move(m_groups);
    }

private:
    void visit(const std::string& path, std::size_t depth) {
        const std::string whole = m_top + path;
        const std::size_t place = m_groups.size();
        std::optional<GroupUse> group = path.empty() ? std::nullopt : groupAt(m_tree, whole, path.substr(1));
        const bool isListed = group.has_value();
        if (isListed) {
            m_groups.push_back(*std::move(group));
        }
        Folder folder(m_tree.path(whole));
        while (const char* const name = folder.next()) {
            struct stat about {};
            const bool isGroup = folder.mayBeFolder() && // a group has some sixty files beside
                                 ::fstatat(folder.number(), name, &about, AT_SYMLINK_NOFOLLOW) == 0 &&
                                 S_ISDIR(about.st_mode);
            if (isGroup && isListed) {
                m_groups[place].isLeaf = false;
            }
            if (isGroup && depth < deepest && m_groups.size() < mostGroups) {
                visit(path + '/' + name, depth + 1);
            }
        }
    }

    const KernelTree& m_tree;
    std::string m_top;
    std::vector<GroupUse> m_groups;
};

} // namespace

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
    return groupAt(tree, managerFolder(user) + '/' + path, path);
}

std::vector<GroupUse> readGroups(const KernelTree& tree, uid_t user) {
    return tree.exists("sys/fs/cgroup/cgroup.controllers") ? GroupWalk(tree, managerFolder(user)).walk()
                                                           : std::vector<GroupUse>();
}

} // namespace vantor::platform::linux
