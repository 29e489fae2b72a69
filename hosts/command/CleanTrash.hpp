// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds `trash` to `clean`.
void addCleanTrash(CLI::App& clean, Action& action);

} // namespace vantor::hosts::command
