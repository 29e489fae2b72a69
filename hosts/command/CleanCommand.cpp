// SPDX-License-Identifier: MIT
#include "hosts/command/CleanCommand.hpp"

#include "actions/EmptyTrash.hpp"
#include "hosts/command/CleanMemory.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Interruption.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/PageText.hpp"
#include "hosts/common/HostDisposal.hpp"
#include "hosts/common/HostViewer.hpp"
#include "platform/foundation/NSByteCountFormatter.hpp"

#include <CLI/CLI.hpp>
#include <unistd.h>

#include <ctime>
#include <iostream>
#include <limits>
#include <memory>

namespace vantor::hosts::command {

namespace {

struct Arguments {
    std::optional<int> olderThanDays;
    bool dryRun = false;
    bool yes = false;
};

std::string bytesText(std::uint64_t bytes) {
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return bytes == 0 ? "0 KB"
                      : platform::NSByteCountFormatter::stringFromByteCount(
                            static_cast<std::int64_t>(std::min(bytes, most)),
                            platform::NSByteCountFormatterCountStyle::file);
}

std::string itemsText(std::size_t items) {
    return std::to_string(items) + (items == 1 ? " item" : " items");
}

void list(const EmptyTrash& trash) {
    constexpr std::size_t width = 10;
    std::string text;
    for (const platform::TrashItem& item : trash.items()) {
        const std::string note = !item.identity    ? "  (only a note is left)"
                                 : item.isExpunged ? "  (deleted already, not yet given back)"
                                                   : "";
        text += atRight(bytesText(item.bytes), width) + "  " + item.origin + note + '\n';
    }
    print(text + atRight(bytesText(trash.bytes()), width) + "  in all, " + itemsText(trash.items().size()) +
          '\n');
}

bool isWanted(const EmptyTrash& trash) {
    print("Delete " + itemsText(trash.items().size()) + ", " + bytesText(trash.bytes()) +
          ", for good? [y/N] ");
    if (printError() != 0) {
        return false; // nobody saw what it is about
    }
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

int emptyNow(const EmptyTrash& trash) {
    stopWhenInterrupted();
    const TrashEmptied result = trash.run([] { return !isInterrupted(); });
    for (const std::string& problem : result.problems) {
        complain(problem);
    }
    std::string text = "Deleted " + itemsText(result.items) + " with " + bytesText(result.bytes) + ".";
    if (result.gained) {
        text += " " + bytesText(*result.gained) + " more are available now.";
    }
    print(text + '\n');
    return result.problems.empty() && trash.problems().empty() ? done : refused;
}

int cleanTrash(const Arguments& arguments) {
    std::optional<std::int64_t> before;
    if (arguments.olderThanDays) {
        constexpr std::int64_t day = 86'400;
        before = static_cast<std::int64_t>(std::time(nullptr)) - *arguments.olderThanDays * day;
    }
    const bool canAsk = ::isatty(STDIN_FILENO) != 0;
    if (!arguments.dryRun && !arguments.yes && !canAsk) {
        complain("to delete, --yes is needed where standard input is no terminal; --dry-run only lists.");
        return wrongUsage;
    }
    const EmptyTrash trash(before);
    for (const std::string& problem : trash.problems()) {
        complain(problem);
    }
    if (trash.items().empty()) {
        const bool isKnown = trash.problems().empty();
        if (isKnown) {
            print(before ? "Nothing in the trash is that old.\n" : "The trash is empty.\n");
        }
        return isKnown ? nothingThere : refused;
    }
    if (arguments.dryRun || !arguments.yes) {
        list(trash);
    }
    if (arguments.dryRun) {
        return trash.problems().empty() ? done : refused;
    }
    if (!arguments.yes && !isWanted(trash)) {
        print("Nothing was deleted.\n");
        return nothingThere;
    }
    return emptyNow(trash);
}

} // namespace

void addCleanCommands(CLI::App& app, Action& action) {
    CLI::App& clean = *app.add_subcommand("clean", "Give back what is not needed")->group("Commands");
    clean.require_subcommand(1);
    addCleanMemory(clean, action);
    CLI::App* const trash = clean.add_subcommand("trash", "Empty the trash on every volume of this machine");
    trash->group("Commands");
    const auto given = std::make_shared<Arguments>();
    trash
        ->add_option("--older-than", given->olderThanDays,
                     "Only what was thrown away so many DAYS ago or earlier")
        ->type_name("DAYS")
        ->check(CLI::Range(0, 36'500).description(""));
    trash->add_flag("--dry-run", given->dryRun, "List what would be deleted, and delete nothing");
    trash->add_flag("--yes", given->yes, "Do not ask");
    trash->callback([&action, given] {
        action = [given] {
            const common::HostViewer viewer(false, false);
            const common::HostDisposal disposal;
            return cleanTrash(*given);
        };
    });
}

} // namespace vantor::hosts::command
