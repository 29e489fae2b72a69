// SPDX-License-Identifier: MIT
#pragma once

#include "platform/viewer/SuiteEdit.hpp"

#include <chrono>
#include <string>

namespace vantor::platform::linux {

/// Changes a preference file that others may be changing too. The lock, flock(2), is on the file's folder,
/// since the file itself is replaced each time; the file is read again once it is held. Where a lock is not
/// to be had within `patience` (some network file systems have none, and its holder may hang), the change
/// is made without. The new file gets the old one's mode, else 0600; missing folders are made with 0700;
/// file and folder are on the disk before this returns. A relative path is taken from the working folder. Any
/// thread.
[[nodiscard]] SuiteChange changeSuiteFile(const std::string& path, const SuiteEditor& edit,
                                          std::chrono::milliseconds patience = std::chrono::seconds(1));

} // namespace vantor::platform::linux
