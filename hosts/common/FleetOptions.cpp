// SPDX-License-Identifier: MIT
#include "hosts/common/FleetOptions.hpp"

#include "hosts/common/OptionChecks.hpp"
#include "hosts/common/RemoteNode.hpp"

#include <array>
#include <charconv>
#include <utility>

namespace vantor::hosts::common {

namespace {

constexpr double mostMachines = 100'000; // of a demonstration

std::string checkEvery(const std::string& text) {
    const std::optional<double> seconds = plainNumber(text);
    return seconds && *seconds >= 0.1 && *seconds <= 3600 ? std::string() : "must be a number of seconds";
}

std::string checkCount(const std::string& text) {
    const std::optional<double> count = plainNumber(text);
    const bool isCount = count && *count >= 1 && *count <= mostMachines &&
                         text.find_first_not_of("0123456789") == std::string::npos;
    return isCount ? std::string() : "must be a number of machines, 1 to 100000";
}

std::string checkPresent(const std::string& text) {
    return text.empty() ? "must not be empty" : std::string();
}

} // namespace

void FleetOptions::addTo(CLI::App& app, const std::string& heading, CLI::Option* demo) {
    CLI::Option* const made =
        app.add_option("--demo-fleet", m_demo, "Show a wall of so many made-up machines")
            ->check(CLI::Validator(checkCount, ""))
            ->type_name("COUNT")
            ->excludes(demo)
            ->group(heading);
    const auto add = [&](const char* name, auto& target, const char* help, const char* word) {
        return app.add_option(name, target, help)->type_name(word)->group(heading);
    };
    const auto addSource = [&](const char* name, auto& target, const char* help, const char* word) {
        return add(name, target, help, word)
            ->check(CLI::Validator(checkPresent, ""))
            ->excludes(demo)
            ->excludes(made);
    };
    CLI::Option* const node =
        addSource("--node", m_choice.nodes,
                  "Watch the machine whose node_exporter answers there; repeatable: a wall", "ADDRESS")
            ->check(CLI::Validator(&RemoteNode::problemWith, ""))
            ->expected(1)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    addSource("--nodes", m_choice.nodesFile, "Watch those of a file_sd list, a JSON file", "FILE");
    CLI::Option* const server =
        addSource("--prometheus", m_choice.prometheus, "Watch the machines that a Prometheus knows", "URL");
    add("--select", m_choice.select, "Of these the ones that match labels, such as job=\"node\"", "SELECTOR")
        ->needs(server);
    m_list = addSource("--fleet", m_choice.list,
                       "Watch the sources of ~/.config/vantor/fleet.json, or the one of that name", "[NAME]")
                 ->expected(0, 1);
    addSource("--machine", m_choice.machine, "Watch that one of ~/.config/vantor/fleet.json", "NAME")
        ->excludes(node);
    add("--every", m_every, "Ask every N seconds, 0.1 to 3600; 5 for machines asked directly", "N")
        ->check(CLI::Validator(checkEvery, ""));
    add("--group-by", m_choice.groupBy, "Group a wall's machines by a label, such as dc", "LABEL");
    add("--sort", m_sort, "Order a wall by: worst, name, ram, storage, cpu or network", "ORDER")
        ->check(oneOf({"worst", "name", "ram", "storage", "cpu", "network"}));
}

FleetChoice FleetOptions::choice() const {
    FleetChoice choice = m_choice;
    choice.listed = m_list->count() > 0;
    choice.every = plainNumber(m_every);
    choice.demo = static_cast<std::size_t>(plainNumber(m_demo).value_or(0));
    choice.sort = m_sort;
    if (choice.every && !choice.isWall() && !choice.isOne()) {
        throw CLI::ValidationError("--every", "goes with an option that names other machines");
    }
    for (const auto& [name, value] :
         {std::pair("--group-by", &choice.groupBy), std::pair("--sort", &choice.sort)}) {
        if (!value->empty() && !choice.isWall()) {
            throw CLI::ValidationError(name, "goes with several machines");
        }
    }
    if (const std::string problem = FleetHost::problemWith(choice); !problem.empty()) {
        const std::size_t colon = problem.find(": ");
        throw CLI::ValidationError(problem.substr(0, colon), problem.substr(colon + 2));
    }
    return choice;
}

std::vector<std::string> FleetOptions::words(const FleetChoice& choice) {
    std::vector<std::string> words;
    const auto add = [&words](const char* name, const std::string& value) {
        if (!value.empty()) {
            words.insert(words.end(), {name, value});
        }
    };
    for (const std::string& node : choice.nodes) {
        add("--node", node);
    }
    add("--nodes", choice.nodesFile);
    add("--prometheus", choice.prometheus);
    add("--select", choice.select);
    if (choice.listed) {
        words.emplace_back("--fleet");
        if (!choice.list.empty()) {
            words.push_back(choice.list);
        }
    }
    add("--machine", choice.machine);
    add("--group-by", choice.groupBy);
    add("--sort", choice.sort);
    if (choice.every) {
        std::array<char, 32> seconds{};
        const char* const end = std::to_chars(seconds.begin(), seconds.end(), *choice.every).ptr;
        add("--every", {seconds.data(), static_cast<std::size_t>(end - seconds.data())});
    }
    if (choice.demo > 0) {
        add("--demo-fleet", std::to_string(choice.demo));
    }
    return words;
}

} // namespace vantor::hosts::common
