// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

/// What the commands write to standard output. Main thread.
namespace vantor::hosts::command {

/// Writes a text at once, however long its reader takes. After a failure nothing more is written.
void print(std::string_view text);

/// What went wrong, an errno value (EPIPE: the reader has gone); 0 while all was written.
[[nodiscard]] int printError();

} // namespace vantor::hosts::command
