// SPDX-License-Identifier: MIT
#pragma once

#include "pages/MemoryPage.hpp"

#include <string>

namespace vantor::hosts::command {

/// The page for people, in the viewer's language, names last so that they need no width.
[[nodiscard]] std::string memoryText(const MemoryPage& page);

/// The page for programs: one JSON object on one line, in bytes and percent, and a line feed.
[[nodiscard]] std::string memoryJson(const MemoryPage& page);

} // namespace vantor::hosts::command
