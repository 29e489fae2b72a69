// SPDX-License-Identifier: MIT
#include "platform/linux/workload/DesktopEntries.hpp"

#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/posix/Environment.hpp"

namespace vantor::platform::linux {

namespace {

constexpr std::size_t longestEntry = std::size_t{1} << 18; // those in many languages have 60 KB
constexpr std::size_t mostEntries = 4096;
constexpr std::string_view ending = ".desktop";

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

std::optional<DesktopEntry> DesktopEntries::find(const std::string& id) {
    const auto [known, isNew] = m_known.try_emplace(id);
    for (auto folder = m_folders.begin(); isNew && !known->second && folder != m_folders.end(); ++folder) {
        KernelFile file(*folder + '/' + id + std::string(ending), Shape::manyRecords);
        known->second = parseDesktopEntry(file.read(longestEntry).text);
    }
    return known->second;
}

void DesktopEntries::readAll() {
    for (const std::string& path : m_folders) {
        Folder folder(path);
        while (const char* const name = folder.next()) {
            const std::string_view file = name;
            if (!file.ends_with(ending) || m_known.size() >= mostEntries) {
                continue;
            }
            const std::string id(file.substr(0, file.size() - ending.size()));
            if (const std::optional<DesktopEntry> entry = find(id); entry && !entry->program.empty()) {
                m_programs.try_emplace(entry->program, id);
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
