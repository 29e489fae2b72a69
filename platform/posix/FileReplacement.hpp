// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

namespace vantor::platform::posix {

/// How the name of a file begins that is still being written; its process and a number follow, as in
/// ".vantor-12-0". Its writer holds it locked (flock).
inline constexpr std::string_view unfinishedPrefix = ".vantor-";

/// Writes a file as a whole or not at all: whoever reads meanwhile, or after a full disk or a crash, finds
/// the old content or the new one. Absent when that worked, else the reason in English, beginning with the
/// path.
///
/// A regular file is replaced by a new one in the same folder that takes its mode over; a missing one gets
/// `mode` less the process's umask. Links are followed, but one of another user's is refused, be it a
/// folder on the way (see `findPlace`). A device, a pipe, and what a link of /proc
/// stands for, is no file to replace: it is written into, and given up after five seconds in which nobody
/// reads; a disk is refused. The path must be absolute, and its folder must be there. Names are bytes, in no
/// encoding. May block as long as a disk does. Any thread.
[[nodiscard]] std::optional<std::string> replaceFile(const std::string& path, std::string_view content,
                                                     mode_t mode = 0600);

/// Makes the folders that lead to a file, as far as they are missing, for this user alone (0700), as the XDG
/// base directory rules ask; nowhere behind another user's link. Absent when they are there, else the reason,
/// beginning with the folder.
[[nodiscard]] std::optional<std::string> makeFoldersTo(const std::string& path);

} // namespace vantor::platform::posix
