// SPDX-License-Identifier: MIT
#include "hosts/command/PageCommand.hpp"

#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/MemoryOutput.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/HostWorkload.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>

namespace vantor::hosts::command {

namespace {

/// Says which of these sources could not be read; false where one could not.
bool complainAbout(platform::Source source) {
    bool isSound = true;
    for (const platform::SourceFailure& failure : common::currentFailures()) {
        if (failure.source == source) {
            complain(failure.reason);
            isSound = false;
        }
    }
    return isSound;
}

int ram(bool asJson) {
    const std::optional<MemoryPage> page = memoryPage();
    const bool isSound = complainAbout(platform::Source::memory);
    if (!page) {
        return refused;
    }
    std::fputs((asJson ? memoryJson(*page) : memoryText(*page)).c_str(), stdout);
    return isSound ? done : refused;
}

} // namespace

void addPageCommands(CLI::App& app, Action& action) {
    CLI::App* const command =
        app.add_subcommand("ram", "Show what the RAM ring is made of, and which applications hold it")
            ->group("Commands");
    const auto asJson = std::make_shared<bool>(false);
    command->add_flag("--json", *asJson, "Write it for programs, in bytes");
    command->callback([&action, asJson] {
        action = [asJson] {
            // Never destroyed: workers may be asking it while the program ends.
            [[maybe_unused]] static const auto& machine = *new common::HostMachine(false, false);
            const common::HostWorkload workload;
            return ram(*asJson);
        };
    });
}

} // namespace vantor::hosts::command
