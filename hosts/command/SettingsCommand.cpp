// SPDX-License-Identifier: MIT
#include "hosts/command/SettingsCommand.hpp"

#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/SettingsOutput.hpp"
#include "hosts/command/SettingsWatch.hpp"
#include "hosts/common/HostViewer.hpp"
#include "settings/StoreWriter.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>

namespace vantor::hosts::command {

namespace {

constexpr int anyNumber = -1; // of names

/// The arguments of one command, kept while its action waits to be run.
struct Arguments {
    std::vector<std::string> keys;
    std::string key; // of `set`, which takes one
    std::string value;
    bool json = false;
    bool stored = false;
    bool all = false;
    bool setAside = false;
};

/// The preferences of these names; absent where one is unknown, which is told.
std::optional<std::vector<const Setting*>> settingsNamed(const std::vector<std::string>& names) {
    std::vector<const Setting*> found;
    for (const std::string& name : names) {
        found.push_back(settingNamed(name));
        if (found.back() == nullptr) {
            complain("there is no preference \"" + name + "\"; vantor settings list shows them all.");
            return std::nullopt;
        }
    }
    return found;
}

int list(const Arguments& arguments) {
    const std::vector<SettingState> states = settingStates();
    std::string text = arguments.json ? "[" : "";
    for (const SettingState& state : states) {
        if (arguments.json) {
            text += (text.size() > 1 ? ",\n " : "") + settingJson(state);
        } else {
            text += settingLine(state);
        }
    }
    print(arguments.json ? text + "]\n" : text);
    return complainAboutStore(states) ? done : refused;
}

int get(const Arguments& arguments) {
    const auto settings = settingsNamed(arguments.keys);
    if (!settings) {
        return wrongUsage;
    }
    std::vector<SettingState> states = settingStates();
    std::erase_if(states, [&](const SettingState& state) { return state.setting != settings->front(); });
    const bool isUsable = complainAboutStore(states);
    if (arguments.stored && !states.front().isStored) {
        return isUsable ? nothingThere : refused;
    }
    print(states.front().text() + '\n');
    return isUsable ? done : refused;
}

/// Writes, and says what became of it.
int write(const std::vector<SettingChange>& changes, bool setAside, int unchanged) {
    const StoreOutcome outcome = changeStore(changes, setAside ? BrokenStore::setAside : BrokenStore::leave);
    if (outcome.failure) {
        complain(*outcome.failure + (outcome.couldBeSetAside
                                         ? "\nIt is left as it is. With --set-aside it is kept under another "
                                           "name and a new file begins."
                                         : ""));
        return refused;
    }
    if (!outcome.setAside.empty()) {
        complain("the old file is kept as " + outcome.setAside);
    }
    return outcome.changed ? done : unchanged;
}

int set(const Arguments& arguments) {
    const auto settings = settingsNamed({arguments.key});
    if (!settings) {
        return wrongUsage;
    }
    const Setting& setting = *settings->front();
    const std::optional<SettingValue> value = parseSetting(setting, arguments.value);
    if (!value) {
        complain(std::string(setting.key).append(" takes ").append(setting.takes) + ", not \"" +
                 arguments.value + "\".");
        return wrongUsage;
    }
    return write({{&setting, *value}}, arguments.setAside, done);
}

int reset(const Arguments& arguments) {
    if (arguments.all != arguments.keys.empty()) {
        complain("vantor settings reset takes either the names of preferences or --all.");
        return wrongUsage;
    }
    std::vector<SettingChange> changes;
    if (arguments.all) {
        for (const Setting& setting : allSettings) {
            changes.push_back({&setting});
        }
    } else if (const auto settings = settingsNamed(arguments.keys)) {
        for (const Setting* const setting : *settings) {
            changes.push_back({setting});
        }
    } else {
        return wrongUsage;
    }
    return write(changes, arguments.setAside, nothingThere);
}

int describe(const Arguments& arguments) {
    const auto settings = settingsNamed(arguments.keys);
    if (!settings) {
        return wrongUsage;
    }
    std::string text;
    for (const Setting& setting : allSettings) {
        if (settings->empty() || settings->front() == &setting) {
            text += (text.empty() ? "" : "\n") + settingDescription(setting);
        }
    }
    print(text);
    return done;
}

int watch(const Arguments& arguments) {
    const auto settings = settingsNamed(arguments.keys);
    return settings ? watchSettings(*settings, arguments.json) : wrongUsage;
}

int path(const Arguments& /*arguments*/) {
    const std::string file = platform::currentViewer().suitePath(sharedSuiteName);
    if (file.empty()) {
        complain("there is no home folder for the preferences");
        return refused;
    }
    print(file + '\n');
    return done;
}

using Run = int (*)(const Arguments&);

/// Adds one command, which runs with the user's preferences in place.
CLI::App* add(CLI::App& settings, Action& action, const std::shared_ptr<Arguments>& arguments,
              const std::string& name, const std::string& help, Run run) {
    CLI::App* const command = settings.add_subcommand(name, help)->group("Commands");
    command->callback([&action, arguments, run] {
        action = [arguments, run] {
            const common::HostViewer viewer(false, false); // what is printed here is the same in every locale
            return run(*arguments);
        };
    });
    return command;
}

} // namespace

void addSettingsCommands(CLI::App& app, Action& action) {
    CLI::App& settings = *app.add_subcommand("settings", "Read and change the widget's preferences");
    settings.group("Commands");
    settings.require_subcommand(1);
    settings.footer("Names of preferences are understood in any letter case.");
    const auto given = std::make_shared<Arguments>();
    const auto withKey = [&](CLI::App* command) {
        return command->add_option("KEY", given->keys, "The preference's name")->type_name("");
    };
    const auto withJson = [&](CLI::App* command) {
        command->add_flag("--json", given->json, "Write it for programs");
    };
    const auto withSetAside = [&](CLI::App* command) {
        command->add_flag("--set-aside", given->setAside,
                          "Keep a file that holds no preferences under another name and begin a new one");
    };
    withJson(
        add(settings, action, given, "list", "Show every preference, its value and whether it is set", list));
    CLI::App* command = add(settings, action, given, "get", "Print the value that holds", get);
    withKey(command)->required()->expected(1);
    command->add_flag("--stored", given->stored, "Fail with status 1 where nothing is stored");
    command = add(settings, action, given, "set", "Change a preference", set);
    command->add_option("KEY", given->key, "The preference's name")->type_name("")->required();
    command->add_option("VALUE", given->value, "Its new value; vantor settings describe tells the range")
        ->type_name("")
        ->required();
    withSetAside(command);
    command = add(settings, action, given, "reset", "Go back to the usual value", reset);
    withKey(command)->expected(0, anyNumber);
    command->add_flag("--all", given->all, "All of them");
    withSetAside(command);
    command = add(settings, action, given, "describe", "Tell what a preference does and takes", describe);
    withKey(command)->expected(0, 1);
    command = add(settings, action, given, "watch", "Print a line for each change until interrupted", watch);
    withKey(command)->expected(0, anyNumber);
    withJson(command);
    add(settings, action, given, "path", "Print where the preference file is", path);
}

} // namespace vantor::hosts::command
