// SPDX-License-Identifier: MIT
#include "hosts/command/CleanMemory.hpp"

#include "actions/ActionWords.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Interruption.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/common/HostViewer.hpp"
#include "hosts/common/HostWorkload.hpp"

#include <CLI/CLI.hpp>

#include <memory>

namespace vantor::hosts::command {

int cleanMemory(bool dryRun) {
    const auto keepGoing = [] { return !isInterrupted(); };
    stopWhenInterrupted();
    const FreeUpMemory action(keepGoing);
    const bool isPossible = action.refusal() == FreeUpRefusal::none;
    if (dryRun || !isPossible) {
        print(freeUpOffer(action) + '\n');
        return isPossible ? done : action.refusal() == FreeUpRefusal::notTold ? refused : nothingThere;
    }
    const MemoryFreed freed = action.run(keepGoing);
    print(freeUpResult(freed) + '\n');
    if (freed.end == FreeUpEnd::refused) {
        return refused;
    }
    return freed.availableAfter > freed.availableBefore ? done : nothingThere;
}

void addCleanMemory(CLI::App& clean, Action& action) {
    CLI::App* const memory = clean.add_subcommand(
        "ram", "Move what idle applications do not use to swap, where that gives RAM back");
    memory->group("Commands");
    const auto dryRun = std::make_shared<bool>(false);
    memory->add_flag("--dry-run", *dryRun, "Say how much could be moved, and move nothing");
    memory->callback([&action, dryRun] {
        action = [dryRun] {
            const common::HostViewer viewer(false);
            const common::HostWorkload workload;
            return cleanMemory(*dryRun);
        };
    });
}

} // namespace vantor::hosts::command
