// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>

#include <functional>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// What a pattern found: the open folder, the name in it, its path as bytes, and what it is.
using FoundPath =
    std::function<void(int folder, const char* name, const std::string& path, const struct stat&)>;

/// Finds what a pattern ("firefox/*/cache2", each part as fnmatch(3) knows it) stands for below a folder of
/// this user's. No link and no mount is gone through, and no other user's folder.
void findPaths(const std::string& base, std::string_view pattern, const FoundPath& found);

} // namespace vantor::platform::linux
