// SPDX-License-Identifier: MIT
#pragma once

namespace vantor::hosts::command {

/// From here on an interruption (SIGINT, SIGTERM) does not end the program, so that what was done can be
/// told; the second one does.
void stopWhenInterrupted();

/// Whether one has come.
[[nodiscard]] bool isInterrupted();

} // namespace vantor::hosts::command
