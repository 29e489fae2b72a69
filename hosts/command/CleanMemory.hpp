// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds `clean ram`.
void addCleanMemory(CLI::App& clean, Action& action);

/// Frees memory, or only says how much could be freed at most, and tells what came of it.
[[nodiscard]] int cleanMemory(bool dryRun);

} // namespace vantor::hosts::command
