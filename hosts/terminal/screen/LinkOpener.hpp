// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vantor::hosts::terminal {

/// Hands a link to the desktop's opener (xdg-open), without a shell and without waiting. False where there is
/// no desktop to open it in, or no opener.
bool openLink(const std::string& link);

/// Clears away openers that have ended, at SIGCHLD. True when one of them could not open its link.
bool reapOpeners();

} // namespace vantor::hosts::terminal
