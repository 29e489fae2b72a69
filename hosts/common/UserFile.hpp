// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Small files of a host's own in the user's folders.
namespace vantor::hosts::common {

/// A path below one of `platform::posix::UserFolders`; empty where there is no such folder, for a user
/// without a home.
[[nodiscard]] std::string userFilePath(const std::string& folder, std::string_view name);

/// Writes a file as a whole, with the folders that lead to it. Absent when that worked, else why it did not.
[[nodiscard]] std::optional<std::string> writeUserFile(const std::string& path, std::string_view text);

/// The first four kilobytes of a file; empty when it cannot be read or is no regular file.
[[nodiscard]] std::string readUserFile(const std::string& path);

} // namespace vantor::hosts::common
