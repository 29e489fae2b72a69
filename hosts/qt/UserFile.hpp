// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// Small files of the host's own in the user's folders.
namespace vantor::hosts::qt {

/// The folder that a variable of the XDG base directory rules names, else that one below the home.
[[nodiscard]] std::filesystem::path userFolder(const char* variable, const char* belowHome);

/// Writes a file as a whole, with the folders that lead to it. Nothing when that worked, else why it did not.
[[nodiscard]] std::optional<std::string> writeUserFile(const std::filesystem::path& path,
                                                       const std::string& text);

/// The beginning of a file; empty when it cannot be read.
[[nodiscard]] std::string readUserFile(const std::filesystem::path& path);

} // namespace vantor::hosts::qt
