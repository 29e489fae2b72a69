// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Small files of a host's own in the user's folders. Where these are not on a local file system, a child
/// process does what is asked for, and one that takes longer than a second is given up: a home that hangs
/// costs what stands there, not the program. Main thread.
namespace vantor::hosts::common {

/// A path below one of `platform::posix::UserFolders`; empty where there is no such folder, for a user
/// without a home.
[[nodiscard]] std::string userFilePath(const std::string& folder, std::string_view name);

/// Writes a file as a whole, with the folders that lead to it. Absent when that worked, else why it did not.
[[nodiscard]] std::optional<std::string> writeUserFile(const std::string& path, std::string_view text);

/// The first four kilobytes of a file; empty when it cannot be read or is no regular file.
[[nodiscard]] std::string readUserFile(const std::string& path);

/// Whether there is a file; false also where nobody answers.
[[nodiscard]] bool userFileExists(const std::string& path);

/// Takes a file away; one that is not there is no problem. Absent when it is gone, else why it is not.
[[nodiscard]] std::optional<std::string> removeUserFile(const std::string& path);

} // namespace vantor::hosts::common
