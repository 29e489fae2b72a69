// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds `open`, and what happens without any command: the window where there can be one, else the page as
/// text.
void addOpenCommand(CLI::App& app, Action& action);

} // namespace vantor::hosts::command
