// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds `settings` and what it can do; the one that is chosen sets `action`.
void addSettingsCommands(CLI::App& app, Action& action);

} // namespace vantor::hosts::command
