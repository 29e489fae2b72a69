// SPDX-License-Identifier: MIT
#pragma once

#include "pages/ProcessorPage.hpp"

#include <string>

namespace vantor::hosts::command {

/// The page for people, in the viewer's language, names last so that they need no width.
[[nodiscard]] std::string processorText(const ProcessorPage& page);

/// The page for programs: one JSON object on one line, in percent and seconds, and a line feed.
[[nodiscard]] std::string processorJson(const ProcessorPage& page);

} // namespace vantor::hosts::command
