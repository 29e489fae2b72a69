// SPDX-License-Identifier: MIT
#include "hosts/common/LinkHandlers.hpp"

#include "hosts/common/HostMachine.hpp"
#include "platform/posix/BoundedChild.hpp"
#include "platform/posix/Environment.hpp"
#include "platform/posix/RegularFile.hpp"
#include "platform/posix/UserFolders.hpp"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <system_error>

namespace vantor::hosts::common {

namespace posix = platform::posix;

namespace {

constexpr std::size_t longestFile = std::size_t{4}
                                    << 20; // bytes; the cache of a large desktop has some 200 KB
constexpr int mostEntries = 4096;          // of a folder without a cache

using Names = std::vector<std::string>;

std::string inFolder(std::string folder, const std::string& name) {
    return folder.append(1, '/').append(name);
}

/// The parts between separators that hold something.
Names partsOf(std::string_view text, char separator) {
    Names parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) {
            parts.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

Names absolutePaths(const char* variable, std::string_view usual) {
    const std::string text = posix::environmentText(variable);
    Names paths = partsOf(text.empty() ? usual : std::string_view(text), ':');
    std::erase_if(paths, [](const std::string& path) { return !path.starts_with('/'); });
    return paths;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// A file of groups of keys with values, as desktop entries and lists of choices are. The first of two values
/// counts.
class KeyFile {
public:
    explicit KeyFile(const std::string& path) : m_text(posix::readRegularFile(path, longestFile)) {}

    [[nodiscard]] bool isEmpty() const { return m_text.empty(); }
    [[nodiscard]] std::string value(std::string_view group, std::string_view key) const {
        bool isInGroup = false;
        for (std::string_view rest = m_text; !rest.empty();) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            const std::string_view line = trimmed(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
            if (line.starts_with('[')) {
                isInGroup = line.size() == group.size() + 2 && line.substr(1, group.size()) == group;
            } else if (const std::size_t equals = line.find('='); isInGroup &&
                                                                  equals != std::string_view::npos &&
                                                                  trimmed(line.substr(0, equals)) == key) {
                return std::string(trimmed(line.substr(equals + 1)));
            }
        }
        return {};
    }
    [[nodiscard]] Names values(std::string_view group, std::string_view key) const {
        return partsOf(value(group, key), ';');
    }

private:
    std::string m_text;
};

/// Whether the program that TryExec names is there; one that is looked for in a folder that may hang is.
bool isInstalled(const std::string& program) {
    const auto isThere = [](const std::string& path) {
        return !isOnThisMachine(path) || ::access(path.c_str(), X_OK) == 0;
    };
    if (program.empty() || program.find('/') != std::string::npos) {
        return program.empty() || isThere(program);
    }
    return std::ranges::any_of(absolutePaths("PATH", "/usr/local/bin:/usr/bin:/bin"),
                               [&](const std::string& folder) { return isThere(inFolder(folder, program)); });
}

bool isProgram(const KeyFile& entry) {
    constexpr std::string_view group = "Desktop Entry";
    return entry.value(group, "Hidden") != "true" && isInstalled(entry.value(group, "TryExec")) &&
           (!entry.value(group, "Exec").empty() || entry.value(group, "DBusActivatable") == "true");
}

/// Whether an entry of that name is there. "kde-a.desktop" may be the file a.desktop in the folder kde; one
/// of the user's own stands for the system's.
bool isProgram(const Names& folders, const std::string& name) {
    if (name.find('/') != std::string::npos) {
        return false;
    }
    for (const std::string& folder : folders) {
        std::string below = name;
        for (;;) {
            if (const KeyFile entry(inFolder(folder, below)); !entry.isEmpty()) {
                return isProgram(entry);
            }
            const std::size_t dash = below.find('-');
            if (dash == std::string::npos) {
                break;
            }
            below[dash] = '/';
        }
    }
    return false;
}

/// The entries of a folder that say themselves that they open a kind.
Names openers(const std::string& folder, const std::string& kind) {
    Names found;
    std::error_code error;
    int left = mostEntries;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end && left-- > 0;
         entry.increment(error)) {
        const std::filesystem::path& path = entry->path();
        if (path.extension() == ".desktop" &&
            std::ranges::count(KeyFile(path.native()).values("Desktop Entry", "MimeType"), kind) > 0) {
            found.push_back(path.filename().native());
        }
    }
    return found;
}

bool isOpened(const LinkHandlers& handlers, const std::string& kind) {
    std::set<std::string> removed;
    Names offered;
    const auto offer = [&offered](const Names& names) {
        offered.insert(offered.end(), names.begin(), names.end());
    };
    for (const std::string& list : handlers.lists) {
        const KeyFile choices(list);
        for (const std::string& name : choices.values("Default Applications", kind)) {
            if (isProgram(handlers.applications, name)) {
                return true;
            }
        }
        offer(choices.values("Added Associations", kind));
        for (std::string& name : choices.values("Removed Associations", kind)) {
            removed.insert(std::move(name));
        }
    }
    for (const std::string& folder : handlers.applications) {
        const KeyFile cache(folder + "/mimeinfo.cache");
        offer(cache.values("MIME Cache", kind));
        // Entries that are copied into the user's own folder often get into no cache.
        if (cache.isEmpty() || &folder == &handlers.applications.front()) {
            offer(openers(folder, kind));
        }
    }
    return std::ranges::any_of(offered, [&](const std::string& name) {
        return !removed.contains(name) && isProgram(handlers.applications, name);
    });
}

} // namespace

LinkHandlers LinkHandlers::fromEnvironment() {
    const posix::UserFolders user = posix::UserFolders::fromEnvironment();
    Names configs = absolutePaths("XDG_CONFIG_DIRS", "/etc/xdg");
    Names data = absolutePaths("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    if (!user.config.empty()) {
        configs.insert(configs.begin(), user.config);
    }
    if (!user.data.empty()) {
        data.insert(data.begin(), user.data);
    }
    LinkHandlers handlers;
    for (const std::string& folder : data) {
        handlers.applications.push_back(folder + "/applications");
    }
    Names names;
    for (std::string desktop : partsOf(posix::environmentText("XDG_CURRENT_DESKTOP"), ':')) {
        std::ranges::transform(desktop, desktop.begin(), [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        });
        names.push_back(desktop + "-mimeapps.list");
    }
    names.emplace_back("mimeapps.list");
    for (const Names* folders : {&configs, &handlers.applications}) {
        for (const std::string& folder : *folders) {
            for (const std::string& name : names) {
                handlers.lists.push_back(inFolder(folder, name));
            }
        }
    }
    return handlers;
}

bool LinkHandlers::haveScheme(std::string_view scheme) const {
    const std::string kind = "x-scheme-handler/" + std::string(scheme);
    if (std::ranges::all_of(lists, isOnThisMachine) && std::ranges::all_of(applications, isOnThisMachine)) {
        return isOpened(*this, kind);
    }
    const auto look = [&] { return std::string(isOpened(*this, kind) ? "yes" : "no"); };
    return posix::runInChild(look, std::chrono::seconds(1)) != "no";
}

} // namespace vantor::hosts::common
