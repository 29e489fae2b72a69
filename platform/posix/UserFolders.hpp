// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::platform::posix {

/// Where the user's files are, after the XDG base directory rules: a variable that is unset, empty or no
/// absolute path counts as unset. Any of them may be empty on a machine without a home.
struct UserFolders {
    std::string home = {};
    std::string config = {};    ///< $XDG_CONFIG_HOME, else ~/.config
    std::string cache = {};     ///< $XDG_CACHE_HOME, else ~/.cache
    std::string data = {};      ///< $XDG_DATA_HOME, else ~/.local/share
    std::string state = {};     ///< $XDG_STATE_HOME, else ~/.local/state
    std::string suiteFile = {}; ///< $VANTOR_SUITE_FILE: the preference file itself

    /// From this process's environment; without HOME the home is the one in the user database.
    static UserFolders fromEnvironment();
};

} // namespace vantor::platform::posix
