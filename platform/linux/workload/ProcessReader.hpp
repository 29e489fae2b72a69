// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/KernelTree.hpp"
#include "platform/linux/workload/KeptFile.hpp"
#include "platform/linux/workload/WorkText.hpp"

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::platform::linux {

/// A user's processes, which are asked for again and again. Their files of /proc stay open, as far as there
/// are not too many, and the memory of one that has touched no new page is not asked for again: a process
/// that rests costs one short read. Not for several threads at once.
class ProcessReader {
public:
    ProcessReader(KernelTree tree, uid_t user) : m_tree(std::move(tree)), m_user(user) {}

    /// Those that run, by number, without kernel threads. One that was another user's under its number is
    /// found after eight calls at most.
    [[nodiscard]] std::map<int, ProcessStat> read();
    /// The same with their memory, for who asks once: of one file each, /proc/PID/status, so that names,
    /// parents and sessions, and the terminals of those that lead one, are all that is told of them; and
    /// nothing stays open.
    [[nodiscard]] std::map<int, ProcessStat> readOnce();
    /// The memory of one of those.
    [[nodiscard]] ProcessMemory memory(int process);
    /// The name of the file that one of those runs, as below.
    [[nodiscard]] const std::string& program(int process);

private:
    struct Entry {
        KeptFile file;
        ProcessStat stat, statThen; ///< when its memory was read
        ProcessMemory memory;
        bool hasMemory = false;
        std::string program;
        std::uint64_t round = 0;
        void setMemory(const ProcessMemory& bytes, bool stays);
    };
    [[nodiscard]] bool isOurs(int process) const;
    [[nodiscard]] bool isKnownAsForeign(int process) const;
    [[nodiscard]] std::optional<ProcessStat> readStat(KeptFile& file, int process);
    [[nodiscard]] std::optional<ProcessStatus> readStatus(int process);
    [[nodiscard]] bool update(Entry& entry, int process, bool once);
    [[nodiscard]] std::map<int, ProcessStat> look(bool once);

    const KernelTree m_tree;
    const uid_t m_user;
    std::optional<Folder> m_folder; ///< /proc
    bool m_isLive = false;          ///< made by the kernel: files may stay open
    std::map<int, Entry> m_entries;
    std::map<int, std::uint64_t> m_foreign; ///< other users' processes, and the look that saw them last
    std::vector<char> m_buffer;
    std::size_t m_kept = 0; ///< files that are open
    std::uint64_t m_round = 0;
};

/// A process's memory; none for one that ended meanwhile.
[[nodiscard]] ProcessMemory readProcessMemory(const KernelTree& tree, int process);

/// The name of the file that a process runs, without its folders; its own name where the link cannot be read.
[[nodiscard]] std::string programOf(const KernelTree& tree, int process, const ProcessStat& stat);

/// The id of the Flatpak application that a process belongs to; empty for any other.
[[nodiscard]] std::string flatpakOf(const KernelTree& tree, int process);

} // namespace vantor::platform::linux
