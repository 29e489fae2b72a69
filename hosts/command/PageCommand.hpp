// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/command/CommandLine.hpp"
#include "settings/DeepLink.hpp"

namespace CLI {
class App;
}

namespace vantor::hosts::command {

/// Adds the commands that print a page once.
void addPageCommands(CLI::App& app, Action& action);

/// Prints a page as text, and leaves the machine and what runs on it in place. Gives the exit status.
[[nodiscard]] int printPage(DeepLink::Page page);

} // namespace vantor::hosts::command
