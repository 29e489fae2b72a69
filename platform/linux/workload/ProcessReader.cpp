// SPDX-License-Identifier: MIT
#include "platform/linux/workload/ProcessReader.hpp"

#include "platform/linux/kernel/TextScan.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>

namespace vantor::platform::linux {

namespace {

std::string under(int process, std::string_view file) {
    return std::to_string(process).append(file); // short enough to need no memory of its own
}

std::string programIn(int folder, const std::string& link, const ProcessStat& stat) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = ::readlinkat(folder, link.c_str(), target.data(), target.size());
    std::string_view path(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    constexpr std::string_view replaced = " (deleted)"; // by a newer version, say
    if (path.ends_with(replaced)) {
        path.remove_suffix(replaced.size());
    }
    path = path.substr(path.rfind('/') + 1);
    return path.empty() ? stat.name : std::string(path);
}

} // namespace

bool ProcessReader::isOurs(int process) const {
    struct stat about {};
    return ::fstatat(m_folder->number(), std::to_string(process).c_str(), &about, AT_SYMLINK_NOFOLLOW) == 0 &&
           about.st_uid == m_user;
}

/// A number is soon asked about again, since it may be another process's by then.
bool ProcessReader::isKnownAsForeign(int process) const {
    constexpr std::uint64_t rounds = 8;
    return m_foreign.contains(process) && (m_round + static_cast<std::uint64_t>(process)) % rounds != 0;
}

std::optional<ProcessStat> ProcessReader::readStat(KeptFile& file, int process) {
    constexpr std::size_t mostKept = 500; // a program may usually have 1024
    const bool wasOpen = file.isOpen();
    const std::string_view text = file.read(m_folder->number(), under(process, "/stat"), m_buffer,
                                            m_isLive && (wasOpen || m_kept < mostKept));
    m_kept += file.isOpen() && !wasOpen ? std::size_t{1} : std::size_t{0};
    m_kept -= wasOpen && !file.isOpen() ? std::size_t{1} : std::size_t{0};
    return parseProcessStat(text);
}

std::optional<ProcessStatus> ProcessReader::readStatus(int process) {
    KeptFile file;
    std::optional<ProcessStatus> status =
        parseProcessStatus(file.read(m_folder->number(), under(process, "/status"), m_buffer, false));
    if (status &&
        status->stat.session == process) { // few lead one, and only the other file tells their terminal
        KeptFile other;
        const auto stat =
            parseProcessStat(other.read(m_folder->number(), under(process, "/stat"), m_buffer, false));
        status->stat.hasTerminal = stat && stat->hasTerminal;
    }
    return status;
}

void ProcessReader::Entry::setMemory(const ProcessMemory& bytes, bool stays) {
    memory = bytes;
    statThen = stat;
    hasMemory = stays;
}

/// Whether it still is one of the user's: one that runs another program by now may belong to somebody else.
bool ProcessReader::update(Entry& entry, int process, bool once) {
    const bool wasOpen = entry.file.isOpen();
    std::optional<ProcessStatus> status = once ? readStatus(process) : std::nullopt;
    std::optional<ProcessStat> stat = status ? std::move(status->stat) : readStat(entry.file, process);
    if (!stat) {
        return false;
    }
    const bool isSame = stat->start == entry.stat.start && stat->name == entry.stat.name;
    if (entry.round != 0 && !(wasOpen && isSame) && !isOurs(process)) {
        return false;
    }
    if (!isSame) {
        entry.program.clear();
        entry.hasMemory = false;
    }
    entry.stat = *std::move(stat);
    entry.round = m_round;
    if (status) {
        entry.setMemory(status->memory, true);
    }
    return true;
}

std::map<int, ProcessStat> ProcessReader::look(bool once) {
    ++m_round;
    std::map<int, ProcessStat> processes;
    const std::string path = m_tree.path("proc");
    if (m_isLive) {
        m_folder->rewind();
    } else {
        m_folder.emplace(path);
        m_isLive = isMadeByTheKernel(path);
    }
    while (const char* const name = m_folder->next()) {
        const std::optional<std::uint64_t> number = numberFrom(name);
        if (!number || *number > INT_MAX) {
            continue;
        }
        const int process = static_cast<int>(*number);
        auto entry = m_entries.find(process);
        if (entry == m_entries.end()) {
            if (isKnownAsForeign(process) || !isOurs(process)) {
                m_foreign[process] = m_round;
                continue;
            }
            entry = m_entries.try_emplace(process).first;
        }
        if (update(entry->second, process, once) && !entry->second.stat.isKernelThread) {
            processes.emplace_hint(processes.end(), process, entry->second.stat);
        }
    }
    std::erase_if(m_foreign, [this](const auto& each) { return each.second != m_round; });
    std::erase_if(m_entries, [this](const auto& each) {
        const bool isGone = each.second.round != m_round;
        m_kept -= isGone && each.second.file.isOpen() ? std::size_t{1} : std::size_t{0};
        return isGone;
    });
    return processes;
}

std::map<int, ProcessStat> ProcessReader::read() {
    return look(false);
}

std::map<int, ProcessStat> ProcessReader::readOnce() {
    m_entries.clear();
    m_kept = 0;
    return look(true);
}

/// Each page that a process gets comes by a fault, and what goes to swap is not resident any more.
ProcessMemory ProcessReader::memory(int process) {
    const auto found = m_entries.find(process);
    if (found == m_entries.end()) {
        return {};
    }
    Entry& entry = found->second;
    const bool isSame = entry.hasMemory && entry.stat.faults == entry.statThen.faults &&
                        entry.stat.resident == entry.statThen.resident;
    if (!isSame) {
        KeptFile status;
        entry.setMemory(
            parseProcessMemory(status.read(m_folder->number(), under(process, "/status"), m_buffer, false)),
            m_isLive);
    }
    return entry.memory;
}

const std::string& ProcessReader::program(int process) {
    Entry& entry = m_entries[process];
    if (entry.program.empty()) {
        entry.program = programIn(m_folder->number(), under(process, "/exe"), entry.stat);
    }
    return entry.program;
}

ProcessMemory readProcessMemory(const KernelTree& tree, int process) {
    return parseProcessMemory(tree.read("proc/" + under(process, "/status")).text);
}

std::string programOf(const KernelTree& tree, int process, const ProcessStat& stat) {
    return programIn(AT_FDCWD, tree.path("proc/" + under(process, "/exe")), stat);
}

std::string flatpakOf(const KernelTree& tree, int process) {
    const std::string info = tree.read("proc/" + under(process, "/root/.flatpak-info")).text;
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

} // namespace vantor::platform::linux
