// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds the commands that print a page once.
void addPageCommands(CLI::App& app, Action& action);

} // namespace vantor::hosts::command
