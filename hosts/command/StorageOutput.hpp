// SPDX-License-Identifier: MIT
#pragma once

#include "pages/StoragePage.hpp"

#include <string>

namespace vantor::hosts::command {

/// The page for people.
[[nodiscard]] std::string storageText(const StoragePage& page);

/// The page for programs: one JSON object on one line, in bytes and seconds since 1970, and a line feed.
[[nodiscard]] std::string storageJson(const StoragePage& page);

} // namespace vantor::hosts::command
