// SPDX-License-Identifier: MIT
#include "platform/posix/UserFolders.hpp"

#include "platform/posix/Environment.hpp"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <string_view>

namespace vantor::platform::posix {

namespace {

std::string absolutePath(const char* variable) {
    std::string path = environmentText(variable);
    return path.starts_with('/') ? path : std::string();
}

std::string homeFolder() {
    std::string home = absolutePath("HOME");
    if (home.empty()) {
        struct passwd entry {};
        struct passwd* found = nullptr;
        std::array<char, 4096> texts{};
        if (::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found) == 0 && found != nullptr) {
            home = entry.pw_dir[0] == '/' ? entry.pw_dir : "";
        }
    }
    return home;
}

std::string folder(const char* variable, const std::string& home, std::string_view underHome) {
    std::string path = absolutePath(variable);
    if (path.empty() && !home.empty()) {
        path = home;
        path += underHome;
    }
    return path;
}

} // namespace

UserFolders UserFolders::fromEnvironment() {
    UserFolders folders;
    folders.home = homeFolder();
    folders.config = folder("XDG_CONFIG_HOME", folders.home, "/.config");
    folders.cache = folder("XDG_CACHE_HOME", folders.home, "/.cache");
    folders.data = folder("XDG_DATA_HOME", folders.home, "/.local/share");
    folders.state = folder("XDG_STATE_HOME", folders.home, "/.local/state");
    folders.suiteFile = environmentText("VANTOR_SUITE_FILE");
    return folders;
}

} // namespace vantor::platform::posix
