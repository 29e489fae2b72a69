// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/kernel/LocalPaths.hpp"
#include "platform/posix/UserFolders.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// The folder that a line of user-dirs.dirs (user-dirs.dirs(5)) names, such as
/// XDG_DOCUMENTS_DIR="$HOME/Papers". Only an absolute path or one that begins with $HOME is a value; a
/// backslash takes the next character as it is. The last such line holds. Absent where there is none. Pure.
[[nodiscard]] std::optional<std::string> parseUserDir(std::string_view text, std::string_view key,
                                                      std::string_view home);

/// The user's documents folder after the configuration folder's user-dirs.dirs, else the home; that too where
/// the file is not on a local file system and cannot be had within a second. Empty on a machine without a
/// home.
[[nodiscard]] std::string documentsFolder(const posix::UserFolders& folders, LocalPaths& paths);

} // namespace vantor::platform::linux
