// SPDX-License-Identifier: MIT
#include "platform/linux/workload/DesktopEntries.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/posix/BoundedChild.hpp"
#include "platform/posix/Environment.hpp"

#include <sys/stat.h>

#include <chrono>
#include <string_view>

namespace vantor::platform::linux {

namespace {

constexpr std::size_t longestEntry = std::size_t{1} << 18; // those in many languages have 60 KB
constexpr std::size_t mostEntries = 4096;
constexpr std::string_view ending = ".desktop";

std::string fileOf(const std::string& folder, const std::string& id) {
    return folder + '/' + id + std::string(ending);
}

std::optional<DesktopEntry> entryIn(const std::string& file) {
    return parseDesktopEntry(KernelFile(file, Shape::manyRecords).read(longestEntry).text);
}

/// The next id in a folder; empty at its end.
std::string nextId(Folder& folder) {
    while (const char* const name = folder.next()) {
        const std::string_view file = name;
        if (file.ends_with(ending) && file.size() > ending.size()) {
            return std::string(file.substr(0, file.size() - ending.size()));
        }
    }
    return {};
}

/// For the way from one process to another: each text with a zero behind it, which none has within.
std::string encodedEntries(const std::string& path) {
    std::string text;
    Folder folder(path);
    std::string id = nextId(folder);
    for (std::size_t count = 0; !id.empty() && count < mostEntries; ++count, id = nextId(folder)) {
        if (const std::optional<DesktopEntry> entry = entryIn(fileOf(path, id))) {
            for (const std::string& field : {id, entry->name, entry->icon, entry->program}) {
                text.append(field, 0, field.find('\0')).push_back('\0');
            }
        }
    }
    return text;
}

std::map<std::string, DesktopEntry> decodedEntries(std::string_view text) {
    std::map<std::string, DesktopEntry> entries;
    while (!text.empty()) {
        DesktopEntry& entry = entries[std::string(takeUntil(text, '\0'))];
        for (std::string* const field : {&entry.name, &entry.icon, &entry.program}) {
            *field = takeUntil(text, '\0');
        }
    }
    return entries;
}

} // namespace

std::vector<std::string> DesktopEntries::foldersOf(const std::string& dataHome) {
    std::vector<std::string> roots;
    if (!dataHome.empty()) {
        roots.push_back(dataHome);
        roots.push_back(dataHome + "/flatpak/exports/share");
    }
    std::string listed = posix::environmentText("XDG_DATA_DIRS");
    std::string_view rest = listed;
    if (rest.empty()) {
        rest = "/usr/local/share:/usr/share";
    }
    while (!rest.empty()) {
        if (const std::string_view root = takeUntil(rest, ':'); root.starts_with('/')) {
            roots.emplace_back(root);
        }
    }
    roots.emplace_back("/var/lib/flatpak/exports/share");
    roots.emplace_back("/var/lib/snapd/desktop");
    for (std::string& root : roots) {
        root += "/applications";
    }
    return roots;
}

const DesktopEntries::Entries& DesktopEntries::distant(const std::string& folder) {
    const auto [known, isNew] = m_distant.try_emplace(folder);
    if (isNew) {
        const auto work = [&folder] { return encodedEntries(folder); };
        known->second = decodedEntries(posix::runInChild(work, std::chrono::seconds(1)).value_or(""));
    }
    return known->second;
}

std::optional<DesktopEntry> DesktopEntries::read(const std::string& folder, const std::string& id) {
    if (m_paths.isLocal(folder)) {
        const std::string file = fileOf(folder, id);
        struct stat about {};
        if (::lstat(file.c_str(), &about) != 0) {
            return std::nullopt;
        }
        if (!S_ISLNK(about.st_mode) || m_paths.isLocal(file)) {
            return entryIn(file);
        }
    }
    const Entries& entries = distant(folder);
    const auto found = entries.find(id);
    return found != entries.end() ? std::optional(found->second) : std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::find(const std::string& id) {
    const auto [known, isNew] = m_known.try_emplace(id);
    for (auto folder = m_folders.begin(); isNew && !known->second && folder != m_folders.end(); ++folder) {
        known->second = read(*folder, id);
    }
    return known->second;
}

/// The folders are gone through in their order: those before this one have no such entry, or it is known.
void DesktopEntries::note(const std::string& folder, const std::string& id) {
    if (m_known.size() >= mostEntries) {
        return;
    }
    std::optional<DesktopEntry>& entry = m_known[id];
    if (!entry) {
        entry = read(folder, id);
    }
    if (entry && !entry->program.empty()) {
        m_programs.try_emplace(entry->program, id);
    }
}

void DesktopEntries::readAll() {
    for (const std::string& path : m_folders) {
        if (m_paths.isLocal(path)) {
            Folder folder(path);
            for (std::string id = nextId(folder); !id.empty(); id = nextId(folder)) {
                note(path, id);
            }
        } else {
            for (const auto& [id, entry] : distant(path)) {
                note(path, id);
            }
        }
    }
}

std::string DesktopEntries::idStarting(const std::string& program) {
    if (const std::optional<DesktopEntry> same = find(program); same && same->program == program) {
        return program;
    }
    if (!m_hasAll) {
        m_hasAll = true;
        readAll();
    }
    const auto found = m_programs.find(program);
    return found == m_programs.end() ? std::string() : found->second;
}

} // namespace vantor::platform::linux
