// SPDX-License-Identifier: MIT
#include "hosts/command/CleanCommand.hpp"

#include "hosts/command/CleanCaches.hpp"
#include "hosts/command/CleanMemory.hpp"
#include "hosts/command/CleanTrash.hpp"

#include <CLI/CLI.hpp>

namespace vantor::hosts::command {

void addCleanCommands(CLI::App& app, Action& action) {
    CLI::App& clean = *app.add_subcommand("clean", "Give back what is not needed")->group("Commands");
    clean.require_subcommand(1);
    addCleanMemory(clean, action);
    addCleanTrash(clean, action);
    addCleanCaches(clean, action);
}

} // namespace vantor::hosts::command
