// SPDX-License-Identifier: MIT
#include "platform/linux/user/UserDirs.hpp"

#include "platform/linux/kernel/Assignments.hpp"
#include "platform/linux/kernel/KernelFile.hpp"
#include "platform/linux/kernel/TextScan.hpp"

namespace vantor::platform::linux {

namespace {

std::optional<std::string> folderFrom(std::string_view text, std::string_view home) {
    constexpr std::string_view variable = "$HOME";
    std::optional<std::string> value = text.starts_with('"') ? unquoted(text) : std::nullopt;
    if (!value || value->find('\0') != std::string::npos) {
        return std::nullopt;
    }
    if (value->starts_with(variable) &&
        (value->size() == variable.size() || (*value)[variable.size()] == '/')) {
        value->replace(0, variable.size(), home);
    }
    while (value->size() > 1 && value->ends_with('/')) {
        value->pop_back();
    }
    return value->starts_with('/') ? value : std::nullopt;
}

} // namespace

std::optional<std::string> parseUserDir(std::string_view text, std::string_view key, std::string_view home) {
    std::optional<std::string> folder;
    while (const std::optional<Line> line = takeLine(text)) {
        std::string_view rest = line->text;
        skipBlanks(rest);
        if (!rest.starts_with(key)) {
            continue;
        }
        rest.remove_prefix(key.size());
        skipBlanks(rest);
        if (!rest.starts_with('=')) {
            continue;
        }
        rest.remove_prefix(1);
        skipBlanks(rest);
        if (std::optional<std::string> value = folderFrom(rest, home)) {
            folder = std::move(value);
        }
    }
    return folder;
}

std::string documentsFolder(const posix::UserFolders& folders, LocalPaths& paths) {
    constexpr std::size_t longestFile = 65536;
    if (!folders.config.empty()) {
        const std::string path = folders.config + "/user-dirs.dirs";
        const auto text = [&path] {
            KernelFile file(path, Shape::oneRecord);
            return std::string(file.read(longestFile).text);
        };
        const std::optional<std::string> folder =
            parseUserDir(paths.ask(path, text).value_or(""), "XDG_DOCUMENTS_DIR", folders.home);
        if (folder) { // not looked for: it may be on a mount that hangs
            return *folder;
        }
    }
    return folders.home;
}

} // namespace vantor::platform::linux
