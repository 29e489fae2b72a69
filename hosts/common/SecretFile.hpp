// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace vantor::hosts::common {

/// Reads a secret: one line of printable characters, at most 64 KiB, without its end. Absent, with the reason
/// in English in `problem`, for what is no regular file of this user's or the administrator's, or what its
/// group or others may read.
[[nodiscard]] std::optional<std::string> readSecret(const std::string& path, std::string& problem);

/// Whether a file may hold a secret, by the same rules.
[[nodiscard]] bool isPrivate(const std::string& path, std::string& problem);

} // namespace vantor::hosts::common
