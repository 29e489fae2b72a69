// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace vantor::platform::linux {

/// Where volumes of this machine's own are mounted, from the text of /proc/self/mountinfo
/// (proc_pid_mountinfo(5)): of network file systems, of FUSE and of the kernel's own none is. Pure.
[[nodiscard]] std::vector<std::string> localMounts(std::string_view mountInfo);

/// Where trashes may be.
struct TrashPlaces {
    std::string data = {};                ///< the home's is in here; empty: none
    std::string home = {};                ///< confined programs have their own below snap; empty: none
    std::vector<std::string> mounts = {}; ///< the tops of volumes
};

/// The folders in which a user's trashes may be: the home's and those of confined programs, and at the top of
/// each volume .Trash/UID, if .Trash is a folder with the sticky bit, and .Trash-UID. Only folders (no links)
/// of that user are trashes. Each is named once, however many mounts show it.
[[nodiscard]] std::vector<std::string> trashFolders(const TrashPlaces& places, uid_t user);

} // namespace vantor::platform::linux
