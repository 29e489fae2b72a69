// SPDX-License-Identifier: MIT
#include "hosts/common/FleetFile.hpp"
#include "hosts/common/FleetSources.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/ShutSource.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/posix/RegularFile.hpp"
#include "platform/posix/UserFolders.hpp"
#include "platform/remote/sources/PrometheusSource.hpp"
#include "platform/remote/sources/QuestionText.hpp"

#include <algorithm>
#include <utility>

namespace vantor::hosts::common {

namespace remote = platform::remote;

namespace {

constexpr std::size_t longestList = std::size_t{1} << 20; // bytes

/// The sources that a choice means: those that list the machine it wants themselves, else all that may know
/// it; those of a name.
std::vector<const FleetListed*> meant(const std::vector<FleetListed>& sources, const FleetChoice& choice) {
    std::vector<const FleetListed*> named;
    for (const FleetListed& source : sources) {
        if (choice.list.empty() || source.name == choice.list) {
            named.push_back(&source);
        }
    }
    if (choice.machine.empty()) {
        return named;
    }
    const auto lists = std::ranges::find_if(
        named, [&choice](const FleetListed* source) { return source->node(choice.machine) != nullptr; });
    if (lists != named.end()) {
        return {*lists};
    }
    std::erase_if(named,
                  [](const FleetListed* source) { return !source->prometheus && source->files.empty(); });
    return named;
}

} // namespace

std::string FleetSources::problemWithSelector(const std::string& text) {
    std::string problem;
    return remote::selectorFrom(text, problem) ? std::string() : problem;
}

void FleetSources::openPrometheus(remote::PrometheusOptions options) {
    std::string problem;
    const std::optional<remote::NodeAddress> address = remote::prometheusAddress(options.url, problem);
    if (address) {
        options.url = address->url;
        options.select = remote::selectorFrom(options.select, problem).value_or(std::string());
        problem = problem.empty() ? remote::problemWith(options) : problem;
    }
    if (!problem.empty()) {
        m_shut.push_back({options.name, platform::printableText(problem, 4096)});
    } else if (hasFetcher()) {
        auto source = std::make_unique<remote::PrometheusSource>(options, *m_fetcher);
        const remote::PrometheusSource& server = *source;
        m_opened.push_back({options.name, std::move(source),
                            [&server](std::string_view key) { return server.watchOf(key); }});
    }
}

void FleetSources::openList(const FleetChoice& choice) {
    const std::string folder = platform::posix::UserFolders::fromEnvironment().config + "/vantor";
    const std::string path = folder + "/fleet.json";
    const std::string name = platform::printableText(path, 4096) + ": ";
    const std::optional<std::string> text =
        askAbout(path, [&path] { return platform::posix::readRegularFile(path, longestList); });
    if (!text || text->empty()) {
        m_complaints.push_back(name + "cannot be read, or holds nothing");
        return;
    }
    std::string problem;
    std::vector<std::string> notes;
    const std::optional<std::vector<FleetListed>> sources = fleetSources(*text, folder, problem, notes);
    for (const std::string& note : notes) {
        m_complaints.push_back(name + note);
    }
    if (!sources) {
        m_complaints.push_back(name + platform::printableText(problem, 4096));
        return;
    }
    const std::vector<const FleetListed*> all = meant(*sources, choice);
    for (const FleetListed* const source : all) {
        openListed(*source, choice, folder, name);
    }
    // Beside others one that cannot be opened is silent; alone it is no wall at all.
    const bool isPart = !m_opened.empty() && choice.machine.empty();
    for (const Shut& shut : std::exchange(m_shut, {})) {
        if (isPart) {
            m_opened.push_back({shut.name, std::make_unique<ShutSource>(shut.name, shut.problem),
                                [](std::string_view /*key*/) { return nullptr; }});
        } else {
            m_complaints.push_back(name + shut.name + ": " + shut.problem);
        }
    }
    if (all.empty()) {
        m_complaints.push_back(
            name + "has no " +
            (choice.machine.empty() ? "source \"" + choice.list : "node \"" + choice.machine) + "\"");
    }
}

void FleetSources::openListed(const FleetListed& listed, const FleetChoice& choice, const std::string& folder,
                              const std::string& path) {
    std::string problem;
    std::vector<std::string> notes;
    const std::optional<Access> access = accessOf(listed, folder, problem, notes);
    for (const std::string& note : notes) {
        m_complaints.push_back(path + note);
    }
    if (!access) {
        m_shut.push_back({listed.name, platform::printableText(problem, 4096)});
        return;
    }
    const std::optional<double> every = choice.every ? choice.every : listed.every;
    if (listed.prometheus) {
        remote::PrometheusOptions options = *listed.prometheus;
        options.name = listed.name;
        options.access = *access;
        if (every) {
            options.every = std::chrono::duration<double>(*every);
        }
        openPrometheus(std::move(options));
        return;
    }
    std::vector<remote::NodeTarget> targets;
    const remote::NodeAddress* const wanted = choice.machine.empty() ? nullptr : listed.node(choice.machine);
    for (const remote::NodeAddress& node : listed.nodes) {
        if (wanted == nullptr || wanted == &node) {
            targets.push_back({node, *access});
        }
    }
    openNodes(listed.name, std::move(targets), wanted == nullptr ? listed.files : std::vector<std::string>(),
              *access, every);
}

} // namespace vantor::hosts::common
