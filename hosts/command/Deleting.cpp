// SPDX-License-Identifier: MIT
#include "hosts/command/Deleting.hpp"

#include "actions/ReleaseWords.hpp"
#include "hosts/command/CommandLine.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Interruption.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/PageText.hpp"

#include <unistd.h>

#include <iostream>
#include <string>

namespace vantor::hosts::command {

namespace {

bool isWanted(std::uint64_t bytes) {
    print(words("command_DELETE", "size", storageSize(bytes)) + ' ');
    if (printError() != 0) {
        return false; // nobody saw what it is about
    }
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

} // namespace

bool canDelete(const DeletionWish& wish) {
    const bool can = wish.dryRun || wish.yes || ::isatty(STDIN_FILENO) != 0;
    if (!can) {
        complain("to delete, --yes is needed where standard input is no terminal; --dry-run only lists.");
    }
    return can;
}

int deleteListed(const DeletionWish& wish, std::uint64_t bytes, const std::function<void()>& list,
                 const std::function<Released(const std::function<bool()>&)>& run) {
    if (wish.dryRun || !wish.yes) {
        list();
    }
    if (wish.dryRun) {
        return done;
    }
    if (!wish.yes && !isWanted(bytes)) {
        print(words("command_NOTDELETED") + '\n');
        return nothingThere;
    }
    stopWhenInterrupted();
    const Released result = run([] { return !isInterrupted(); });
    for (const std::string& problem : result.problems) {
        complain(problem);
    }
    print(releaseResult(result) + '\n');
    return result.problems.empty() ? done : refused;
}

} // namespace vantor::hosts::command
