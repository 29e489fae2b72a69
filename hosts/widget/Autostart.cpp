// SPDX-License-Identifier: MIT
#include "hosts/widget/Autostart.hpp"

#include "hosts/common/UserFile.hpp"
#include "platform/posix/UserFolders.hpp"

#include <filesystem>
#include <system_error>

namespace vantor::hosts::widget {

namespace {

std::string entryPath() {
    return common::userFilePath(platform::posix::UserFolders::fromEnvironment().config,
                                "autostart/vantor-widget.desktop");
}

std::string entryText() {
    std::error_code ignored;
    const std::string program = std::filesystem::read_symlink("/proc/self/exe", ignored).string();
    return "[Desktop "
           "Entry]\nType=Application\nName=Vantor\nIcon=vantor\nX-GNOME-Autostart-enabled=true\nExec=" +
           execArgument(program.empty() ? "vantor-widget" : program) + "\n";
}

} // namespace

std::string execArgument(const std::string& path) {
    std::string quoted = "\"";
    for (const char c : path) {
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

bool isAutostarted() {
    return common::userFileExists(entryPath());
}

std::optional<std::string> setAutostart(bool on) {
    return on ? common::writeUserFile(entryPath(), entryText()) : common::removeUserFile(entryPath());
}

} // namespace vantor::hosts::widget
