// SPDX-License-Identifier: MIT
#include "hosts/command/OpenCommand.hpp"

#include "hosts/command/AppWindow.hpp"
#include "hosts/command/CleanMemory.hpp"
#include "hosts/command/ExitStatus.hpp"
#include "hosts/command/Output.hpp"
#include "hosts/command/PageCommand.hpp"
#include "hosts/common/FreeUpByLink.hpp"
#include "settings/DeepLink.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace vantor::hosts::command {

namespace {

/// The page as text, and memory freed where the link wants that.
int printInstead(const DeepLink::Target& target) {
    const int status = printPage(target.page);
    if (!target.cleansRam) {
        return status;
    }
    print("\n");
    const common::LinkLeave leave = common::mayFreeUpByLink();
    if (leave.answer == common::LinkLeave::Answer::tooSoon) {
        complain("a link may free memory once a minute; it was less than that ago.");
        return nothingThere;
    }
    if (leave.answer == common::LinkLeave::Answer::notKept) {
        complain("no memory was freed: a link may do that once a minute, and the time cannot be kept. " +
                 leave.problem + ". \"vantor clean ram\" frees it.");
        return refused;
    }
    return std::max(status, cleanMemory(false));
}

int open(const std::string& link) {
    const DeepLink::Target target = DeepLink::targetOf(link);
    if (canShowWindow()) {
        // A window that is open already shows some page: what is no link of ours asks for the first one.
        const bool isFirstPage = !link.empty() && !target.isKnown;
        complain(becomeWindow(appProgram(), isFirstPage ? std::string(DeepLink::showRam) : link));
    }
    return printInstead(target);
}

} // namespace

void addOpenCommand(CLI::App& app, Action& action) {
    CLI::App* const command =
        app.add_subcommand("open", "Show the window, or the page as text where there is no display");
    command->group("Commands");
    const auto link = std::make_shared<std::string>();
    command->add_option("LINK", *link, "One of the four links of the widget; anything else is the first page")
        ->type_name("");
    command->callback([&action, link] { action = [link] { return open(*link); }; });
    action = [] { return open(""); }; // where no command is given
}

} // namespace vantor::hosts::command
