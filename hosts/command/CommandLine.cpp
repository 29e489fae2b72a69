// SPDX-License-Identifier: MIT
#include "hosts/command/CommandLine.hpp"

#include "hosts/command/CleanCommand.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/OpenCommand.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/PageCommand.hpp"
#include "hosts/command/SettingsCommand.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "platform/core/PrintableText.hpp"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <sstream>
#include <string_view>
#include <vector>

namespace vantor::hosts::command {

namespace {

/// The library misses a command before it minds the word that stands in its place.
std::string whatIsWrong(const CLI::App& app, const CLI::ParseError& mistake) {
    const std::vector<std::string> rest = app.remaining(true);
    const bool isExtra = dynamic_cast<const CLI::ExtrasError*>(&mistake) != nullptr;
    const bool missesCommand = (isExtra && !rest.empty() && app.get_subcommands().empty()) ||
                               (dynamic_cast<const CLI::RequiredError*>(&mistake) != nullptr &&
                                std::string_view(mistake.what()).starts_with("A subcommand"));
    if (missesCommand) {
        return rest.empty() ? "a command is missing" : '"' + rest.front() + "\" is no command";
    }
    return mistake.what();
}

} // namespace

Action parseCommandLine(int count, const char* const* arguments) {
    CLI::App app("Vantor on the command line: what its rings are made of, what can be given back, and "
                 "what\nthe widget goes by.",
                 "vantor");
    app.set_version_flag("--version", "vantor " VANTOR_VERSION);
    app.require_subcommand(0, 1);
    app.footer("Without a command it shows the window, or the RAM page as text where there is no "
               "display.\nExit status: 0 done, 1 not set or nothing to gain, 2 wrong usage or value, 3 a "
               "file or the "
               "system refuses.\nvantor COMMAND --help tells about one command.");
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("REQUIRED", "");
    Action action;
    addOpenCommand(app, action);
    addPageCommands(app, action);
    addCleanCommands(app, action);
    addSettingsCommands(app, action);
    try {
        app.parse(count, arguments);
    } catch (const CLI::Success& wish) { // --help and --version
        std::ostringstream text;
        app.exit(wish, text, text);
        print(text.str());
        return [] { return done; };
    } catch (const CLI::ParseError& mistake) {
        complain(whatIsWrong(app, mistake) + "\nvantor --help tells what there is.");
        return [] { return wrongUsage; };
    }
    return action;
}

void complain(const std::string& what) {
    std::string line = "vantor: ";
    for (std::size_t start = 0; start <= what.size();) {
        const std::size_t end = std::min(what.find('\n', start), what.size());
        line += platform::printableText(what.substr(start, end - start), 4096) + '\n';
        start = end + 1;
    }
    common::writeUnhurried(STDERR_FILENO, line);
}

} // namespace vantor::hosts::command
