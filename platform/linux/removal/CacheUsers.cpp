// SPDX-License-Identifier: MIT
#include "platform/linux/removal/CacheUsers.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/linux/kernel/Folder.hpp"
#include "platform/linux/kernel/TextScan.hpp"
#include "platform/linux/removal/PathPattern.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace vantor::platform::linux {

namespace {

/// The process that a lock names: "host-1234", or "192.0.2.1:+1234".
std::optional<std::uint64_t> lockingProcess(int folder, const char* name) {
    std::array<char, 256> target{};
    const ssize_t length = ::readlinkat(folder, name, target.data(), target.size());
    const std::string_view text(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    const std::size_t mark = text.find_last_of("-+");
    return mark != std::string_view::npos ? numberFrom(text.substr(mark + 1)) : std::nullopt;
}

} // namespace

std::string baseOf(std::string_view& place, const std::string& home, const std::string& folder) {
    if (!place.starts_with("~/")) {
        return folder;
    }
    place.remove_prefix(2);
    return home;
}

void CacheUsers::look() {
    m_processes.emplace();
    Folder folder(m_tree.path("proc"));
    while (const char* const name = folder.next()) {
        const std::optional<std::uint64_t> number = numberFrom(name);
        struct stat about {};
        if (number && ::fstatat(folder.number(), name, &about, AT_SYMLINK_NOFOLLOW) == 0 &&
            about.st_uid == ::geteuid()) {
            std::string file = "proc/";
            m_processes->emplace(*number, m_tree.line(file.append(name).append("/comm")).value_or(""));
        }
    }
}

std::string CacheUsers::userOf(const KnownCache& cache) {
    if (cache.programs.empty()) {
        return "";
    }
    if (!m_processes) {
        look();
    }
    for (const auto& [number, name] : *m_processes) {
        if (std::ranges::find(cache.programs, name) != cache.programs.end()) {
            return printableText(name);
        }
    }
    std::string user;
    for (std::string_view lock : cache.locks) {
        const std::string base = baseOf(lock, m_folders.home, m_folders.config);
        findPaths(base, lock, [&](int folder, const char* name, const std::string&, const struct stat&) {
            const std::optional<std::uint64_t> process = lockingProcess(folder, name);
            if (process && m_processes->contains(*process)) {
                user = cache.name;
            }
        });
    }
    return user;
}

} // namespace vantor::platform::linux
