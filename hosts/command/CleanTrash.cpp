// SPDX-License-Identifier: MIT
#include "hosts/command/CleanTrash.hpp"

#include "actions/EmptyTrash.hpp"
#include "actions/ReleaseWords.hpp"
#include "hosts/command/Deleting.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/PageText.hpp"
#include "hosts/common/HostDisposal.hpp"
#include "hosts/common/HostViewer.hpp"

#include <CLI/CLI.hpp>

#include <ctime>
#include <memory>

namespace vantor::hosts::command {

namespace {

struct TrashArguments {
    std::optional<int> olderThanDays;
    DeletionWish wish;
};

void listTrash(const EmptyTrash& trash) {
    constexpr std::size_t width = 10;
    std::string text;
    for (const platform::TrashItem& item : trash.items()) {
        std::string row = atRight(storageSize(item.bytes), width) + "  " + item.origin;
        if (!item.identity || item.isExpunged) {
            row += "  (" + words(item.isExpunged ? "command_TRASHEXPUNGED" : "command_TRASHNOTE") + ')';
        }
        text += row + '\n';
    }
    print(text + atRight(storageSize(trash.bytes()), width) + "  " + words("page_ALL") + '\n');
}

int cleanTrash(const TrashArguments& arguments) {
    std::optional<std::int64_t> before;
    if (arguments.olderThanDays) {
        constexpr std::int64_t day = 86'400;
        before = static_cast<std::int64_t>(std::time(nullptr)) - *arguments.olderThanDays * day;
    }
    if (!canDelete(arguments.wish)) {
        return wrongUsage;
    }
    const EmptyTrash trash(before);
    for (const std::string& problem : trash.problems()) {
        complain(problem);
    }
    const bool isWhole = trash.problems().empty();
    if (trash.items().empty()) {
        if (isWhole) {
            print(words(before ? "command_TRASHRECENT" : "command_TRASHEMPTY") + '\n');
        }
        return isWhole ? nothingThere : refused;
    }
    const int status = deleteListed(
        arguments.wish, trash.bytes(), [&] { listTrash(trash); },
        [&](const auto& keepGoing) { return trash.run(keepGoing); });
    return status == done && !isWhole ? refused : status;
}

} // namespace

void addCleanTrash(CLI::App& clean, Action& action) {
    CLI::App* const trash = clean.add_subcommand("trash", "Empty the trash on every volume of this machine");
    trash->group("Commands");
    const auto given = std::make_shared<TrashArguments>();
    trash
        ->add_option("--older-than", given->olderThanDays,
                     "Only what was thrown away so many DAYS ago or earlier")
        ->type_name("DAYS")
        ->check(CLI::Range(0, 36'500).description(""));
    trash->add_flag("--dry-run", given->wish.dryRun, "List what would be deleted, and delete nothing");
    trash->add_flag("--yes", given->wish.yes, "Do not ask");
    trash->callback([&action, given] {
        action = [given] {
            const common::HostViewer viewer(false);
            const common::HostDisposal disposal;
            return cleanTrash(*given);
        };
    });
}

} // namespace vantor::hosts::command
