// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace vantor::hosts::command {

/// What the command line asks for: to be run once, it gives the exit status.
using Action = std::function<int()>;

/// Reads the command line. What is asked for help or version, or is wrong, is an action too, which prints
/// that.
[[nodiscard]] Action parseCommandLine(int count, const char* const* arguments);

/// Writes a line of what went wrong to standard error, the program's name first and without control
/// characters.
void complain(const std::string& what);

} // namespace vantor::hosts::command
