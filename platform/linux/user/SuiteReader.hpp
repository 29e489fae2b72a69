// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/UserFolders.hpp"
#include "platform/viewer/SuiteFile.hpp"

#include <cstddef>
#include <string>
#include <string_view>

namespace vantor::platform::linux {

/// Preference files are smaller than this; a longer one is not read at all.
inline constexpr std::size_t suiteFileLimit = std::size_t{1} << 20;

/// Reads a file that others write, whole or not at all: it must be a regular file under `suiteFileLimit`, and
/// one that changes while it is read is read again, then given up. Opened without blocking and without
/// leaving a mark; never written. An absent file is no failure. Any thread.
[[nodiscard]] SuiteFile readSuiteFile(const char* path);

/// Where a suite's file is: the file that VANTOR_SUITE_FILE names, else vantor/<suite>.plist in the
/// configuration folder; empty without a home.
[[nodiscard]] std::string suitePath(const posix::UserFolders& folders, std::string_view suiteName);

} // namespace vantor::platform::linux
