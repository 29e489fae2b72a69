// SPDX-License-Identifier: MIT
#include "hosts/command/PageCommand.hpp"

#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/MemoryOutput.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/ProcessorOutput.hpp"
#include "hosts/command/StorageOutput.hpp"
#include "hosts/common/Failures.hpp"
#include "hosts/common/HostDisposal.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/HostWorkload.hpp"
#include "platform/core/MakeForEver.hpp"

#include <CLI/CLI.hpp>

#include <chrono>
#include <ctime>
#include <memory>
#include <thread>

namespace vantor::hosts::command {

namespace {

/// Says whether this source or the preferences, which decide what counts, could not be read; false then.
bool complainAbout(platform::Source source) {
    bool isSound = true;
    for (const platform::SourceFailure& failure : common::currentFailures()) {
        if (failure.source == source || failure.source == platform::Source::preferences) {
            complain(failure.reason);
            isSound = false;
        }
    }
    return isSound;
}

int ram(bool asJson) {
    const std::optional<MemoryPage> page = memoryPage(platform::ListedFor::memoryOnce);
    const bool isSound = complainAbout(platform::Source::memory);
    if (!page) {
        return refused;
    }
    print(asJson ? memoryJson(*page) : memoryText(*page));
    return isSound ? done : refused;
}

int cpu(bool asJson) {
    ProcessorPageSampler sampler;
    std::this_thread::sleep_for(std::chrono::seconds(1)); // what the shares are of
    const ProcessorPage page = sampler.page();
    const bool isSound = complainAbout(platform::Source::processor);
    print(asJson ? processorJson(page) : processorText(page));
    return isSound ? done : refused;
}

int storage(bool asJson) {
    const common::HostDisposal disposal;
    const std::optional<StoragePage> page = storagePage(static_cast<std::int64_t>(std::time(nullptr)));
    const bool isSound = complainAbout(platform::Source::storage);
    if (!page) {
        return refused;
    }
    print(asJson ? storageJson(*page) : storageText(*page));
    return isSound ? done : refused;
}

/// In place from here on: workers may be asking while the program ends.
void putMachineInPlace() {
    platform::makeForEver<common::HostMachine>(false);
    platform::makeForEver<common::HostWorkload>();
}

void addPage(CLI::App& app, Action& action, const char* name, const char* help, int (*print)(bool asJson)) {
    CLI::App* const command = app.add_subcommand(name, help)->group("Commands");
    const auto asJson = std::make_shared<bool>(false);
    command->add_flag("--json", *asJson, "Write it for programs");
    command->callback([&action, asJson, print] {
        action = [asJson, print] {
            putMachineInPlace();
            return print(*asJson);
        };
    });
}

} // namespace

void addPageCommands(CLI::App& app, Action& action) {
    addPage(app, action, "ram", "Show what the RAM ring is made of, and which applications hold it", ram);
    addPage(app, action, "storage", "Show what the storage ring is made of, and what could be released",
            storage);
    addPage(app, action, "cpu", "Show what the CPU ring is made of, over one second", cpu);
}

int printPage(DeepLink::Page page) {
    putMachineInPlace();
    switch (page) {
    case DeepLink::Page::processor:
        return cpu(false);
    case DeepLink::Page::storage:
        return storage(false);
    case DeepLink::Page::memory:
        break;
    }
    return ram(false);
}

} // namespace vantor::hosts::command
