// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Descriptor.hpp"

#include <sys/stat.h>

#include <cstdint>
#include <string>

namespace vantor::platform::posix {

/// Where a path leads to: an open folder and a name in it that is no link any more. What becomes of the names
/// on the way afterwards does not matter.
struct FilePlace {
    Descriptor folder = {};   ///< O_PATH
    std::string name = {};    ///< "." for a path that ends with a slash
    bool exists = false;      ///< whether there is something of that name
    bool isKernels = false;   ///< on procfs, where a link stands for what may have no path, such as a pipe
    struct stat about = {};   ///< of what is there
    std::string problem = {}; ///< why there is no place, in English, the path first; empty where there is
};

enum class MissingFolders : std::uint8_t { areMade, areAProblem };

/// Goes to an absolute path folder by folder, without the kernel's help, which would follow anybody's link:
/// one that belongs to neither this user nor root (nor whom the root folder belongs to, who is root in a user
/// namespace) is a problem wherever it stands on the way, since whoever planted it would choose the file.
/// Missing folders are made for this user alone (0700). Any thread.
[[nodiscard]] FilePlace findPlace(const std::string& path, MissingFolders missing);

} // namespace vantor::platform::posix
