// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds `clean` and what it can give back.
void addCleanCommands(CLI::App& app, Action& action);

} // namespace vantor::hosts::command
