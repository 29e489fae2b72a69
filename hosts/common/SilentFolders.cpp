// SPDX-License-Identifier: MIT
#include "hosts/common/SilentFolders.hpp"

#include "hosts/common/HostMachine.hpp"
#include "platform/posix/UserFolders.hpp"

#include <chrono>
#include <cstdlib>
#include <utility>

namespace vantor::hosts::common {

namespace {

/// Of a folder and what is below it, which may be a mount or a link of its own.
std::optional<std::string> silentOf(const std::string& folder, const char* below,
                                    std::chrono::milliseconds limit) {
    for (const std::string& each : {folder, folder + '/' + below}) {
        if (!folder.empty() && !answers(each, limit)) {
            return each;
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> settleFolders() {
    const platform::posix::UserFolders folders = platform::posix::UserFolders::fromEnvironment();
    const std::chrono::seconds limit{5}; // at a session's start a network's home may be slow
    for (const auto& [folder, fonts] : {std::pair(folders.home, ".fonts"), std::pair(folders.data, "fonts"),
                                        std::pair(folders.config, "fontconfig")}) {
        if (std::optional<std::string> silent = silentOf(folder, fonts, limit)) {
            return silent;
        }
    }
    if (silentOf(folders.cache, "fontconfig", std::chrono::seconds(1))) {
        ::setenv("XDG_CACHE_HOME", "/dev/null", 1); // below that nothing can be, nor be made
    }
    return std::nullopt;
}

} // namespace vantor::hosts::common
