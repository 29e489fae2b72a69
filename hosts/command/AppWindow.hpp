// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::hosts::command {

/// The program of the window, vantor-app: beside this program's own file or, in a build tree, in the folder
/// next to that one's. It is never looked for anywhere else, PATH does not count. Empty where it is not
/// installed.
[[nodiscard]] std::string appProgram();

/// Whether a window could be shown: there is a display, and something to show it with.
[[nodiscard]] bool canShowWindow();

/// Becomes the window's program (execve(2)), which shows itself or has the one that runs show itself. The
/// link goes to it as it is, as one argument; empty: none. Comes back only where that fails, with the reason.
[[nodiscard]] std::string becomeWindow(const std::string& program, const std::string& link);

} // namespace vantor::hosts::command
