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
        take(whole, path);
        Folder folder(m_tree.path(whole));
        while (const char* const name = folder.next()) {
            struct stat about {};
            const bool isGroup =
                ::fstatat(folder.number(), name, &about, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(about.st_mode);
            if (isGroup && depth < deepest && m_groups.size() < mostGroups) {
                visit(path + '/' + name, depth + 1);
            }
        }
    }

    void take(const std::string& whole, const std::string& path) {
        std::vector<int> processes = parseProcessNumbers(m_tree.read(whole + "/cgroup.procs").text);
        const std::string stat = processes.empty() ? std::string() : m_tree.read(whole + "/memory.stat").text;
        const std::optional<std::uint64_t> anonymous = statNumber(stat, "anon");
        if (path.empty() || !anonymous) {
            return;
        }
        const std::optional<std::string> swap = m_tree.line(whole + "/memory.swap.current");
        const std::optional<std::uint64_t> shared = statNumber(stat, "shmem");
        m_groups.push_back(
            {.path = path.substr(1),
             .memory = *anonymous + shared.value_or(0),
             .swap = swap ? numberFrom(*swap).value_or(0) : 0,
             .processorTime = statNumber(m_tree.read(whole + "/cpu.stat").text, "usage_usec").value_or(0),
             .processes = std::move(processes)});
    }

    const KernelTree& m_tree;
    std::string m_top;
    std::vector<GroupUse> m_groups;
};

} // namespace

std::vector<GroupUse> readGroups(const KernelTree& tree, uid_t user) {
    const std::string id = std::to_string(user);
    std::string top = "sys/fs/cgroup/user.slice/user-";
    top.append(id).append(".slice/user@").append(id).append(".service");
    return tree.exists("sys/fs/cgroup/cgroup.controllers") ? GroupWalk(tree, top).walk()
                                                           : std::vector<GroupUse>();
}

} // namespace vantor::platform::linux
