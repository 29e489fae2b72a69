// SPDX-License-Identifier: MIT
#include "hosts/widget/Autostart.hpp"

#include "hosts/common/UserFile.hpp"
#include "platform/posix/UserFolders.hpp"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace vantor::hosts::widget {

namespace {

std::string entryPath() {
    return common::userFilePath(platform::posix::UserFolders::fromEnvironment().config,
                                "autostart/vantor-widget.desktop");
}

/// Absent where the program's place cannot be written into an entry.
std::optional<std::string> entryText(const Options& options) {
    std::error_code ignored;
    const std::string program =
        installedPath(std::filesystem::read_symlink("/proc/self/exe", ignored).string());
    std::vector<std::string> words = windowWords(options);
    words.insert(words.begin(), program.empty() ? "vantor-widget" : program);
    std::string line;
    for (const std::string& word : words) {
        // What needs no quotes has none, so that people can read it.
        const bool isPlain =
            word.starts_with("--") ||
            word.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-") == std::string::npos;
        const std::optional<std::string> argument = isPlain ? std::optional(word) : execArgument(word);
        if (!argument) {
            return std::nullopt;
        }
        line += (line.empty() ? "" : " ") + *argument;
    }
    std::string tried; // TryExec is no command line: nothing but the entry's own escape
    for (const char c : words.front()) {
        tried.append(c == '\\' ? 2 : 1, c);
    }
    return "[Desktop Entry]\nType=Application\nName=Vantor\nIcon=vantor\nX-GNOME-Autostart-enabled=true\n"
           "TryExec=" +
           tried + "\nExec=" + line + "\n";
}

} // namespace

std::optional<std::string> execArgument(const std::string& word) {
    std::string quoted = "\"";
    for (const char c : word) {
        if (static_cast<unsigned char>(c) < ' ') {
            return std::nullopt;
        }
        if (c == '\\') { // once for the quotes and once for the entry's own strings
            quoted += "\\\\\\\\";
        } else if (c == '"' || c == '`' || c == '$') {
            quoted += "\\\\";
            quoted += c;
        } else if (c == '%') {
            quoted += "%%";
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

std::string installedPath(std::string path) {
    constexpr std::string_view remark = " (deleted)";
    std::error_code ignored;
    if (path.ends_with(remark) && !std::filesystem::exists(path, ignored)) {
        path.resize(path.size() - remark.size());
    }
    return path;
}

bool isAutostarted() {
    return common::userFileExists(entryPath());
}

std::optional<std::string> setAutostart(bool on, const Options& options) {
    const std::string path = entryPath();
    if (on) {
        const std::optional<std::string> text = entryText(options);
        return text ? common::writeUserFile(path, *text)
                    : "the name of the program's folder cannot be written into an entry";
    }
    return common::removeUserFile(path);
}

void followInAutostart(const Options& before, const Options& now) {
    const std::optional<std::string> written = entryText(before);
    if (written && common::readUserFile(entryPath()) == *written) {
        (void)setAutostart(true, now);
    }
}

} // namespace vantor::hosts::widget
