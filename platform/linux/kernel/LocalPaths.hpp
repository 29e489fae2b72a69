// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/kernel/MountTable.hpp"
#include "platform/linux/kernel/MountWatch.hpp"

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace vantor::platform::linux {

/// Which paths can be read on the spot: those on local file systems (`MountTable::isLocal`). All others are
/// for a child process, since a thread that waits for a server which went away cannot be ended, nor can its
/// process. A verdict holds until something is mounted or unmounted. Any thread.
class LocalPaths {
public:
    /// Whether anything was mounted is asked no more often than this: once for all readers of a refresh.
    static constexpr std::chrono::milliseconds fresh{20};

    /// `tree` is where proc lies.
    explicit LocalPaths(const KernelTree& tree = KernelTree("/"));

    /// False also where the kernel does not tell.
    [[nodiscard]] bool isLocal(const std::string& path);

    /// What `work` tells about a path: on the spot where that is local, else from a child process, which has
    /// only a copy of what this one knows. Absent where the child takes longer than `limit` or breaks.
    [[nodiscard]] std::optional<std::string> ask(const std::string& path,
                                                 const std::function<std::string()>& work,
                                                 std::chrono::milliseconds limit = std::chrono::seconds(1));
    /// Whether a folder's file system answers, be it that there is no such folder. Local ones are not asked.
    [[nodiscard]] bool answers(const std::string& folder,
                               std::chrono::milliseconds limit = std::chrono::seconds(1));

private:
    void look();

    std::mutex m_mutex;
    const KernelTree m_tree;
    std::optional<std::chrono::steady_clock::time_point> m_looked;
    MountWatch m_watch;
    MountTable m_table;
    std::map<std::string, bool> m_verdicts;
};

} // namespace vantor::platform::linux
