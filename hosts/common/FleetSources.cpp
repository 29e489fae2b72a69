// SPDX-License-Identifier: MIT
#include "hosts/common/FleetSources.hpp"

#include "hosts/common/DemoWatch.hpp"
#include "hosts/common/ListedNodes.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"
#include "platform/simulated/SimulatedFleet.hpp"

#include <chrono>
#include <filesystem>
#include <utility>

namespace vantor::hosts::common {

namespace remote = platform::remote;

void FleetSources::open(const FleetChoice& choice) {
    std::string problem;
    if (choice.demo > 0) {
        openDemo(choice.demo);
        return;
    }
    std::vector<remote::NodeTarget> named;
    named.reserve(choice.nodes.size());
    for (const std::string& node : choice.nodes) {
        named.push_back({*remote::nodeAddress(node, problem)});
    }
    if (!named.empty()) {
        openNodes("nodes", std::move(named), {}, nullptr, choice.every);
    }
    if (!choice.nodesFile.empty()) {
        const std::string name =
            platform::printableText(std::filesystem::path(choice.nodesFile).stem().string(), 64);
        openNodes(name, {}, {choice.nodesFile}, nullptr, choice.every);
    }
    if (!choice.prometheus.empty()) {
        const remote::NodeAddress address = *remote::prometheusAddress(choice.prometheus, problem);
        remote::PrometheusOptions options;
        options.name = address.name;
        options.url = choice.prometheus;
        options.select = choice.select;
        if (choice.every) {
            options.every = std::chrono::duration<double>(*choice.every);
        }
        openPrometheus(std::move(options));
    }
    if (choice.listed || !choice.hasSource()) {
        openList(choice);
    }
}

/// libcurl is opened with the first source that asks.
bool FleetSources::hasFetcher() {
    if (m_fetcher == nullptr) {
        std::string problem;
        m_fetcher = remote::openFetcher(problem);
        if (m_fetcher == nullptr && m_complaints.empty()) {
            m_complaints.push_back(problem);
        }
    }
    return m_fetcher != nullptr;
}

void FleetSources::openDemo(std::size_t count) {
    auto source = std::make_unique<platform::SimulatedFleet>(count);
    const platform::SimulatedFleet& fleet = *source;
    m_opened.push_back({"demo", std::move(source),
                        [&fleet](std::string_view key) { return std::make_unique<DemoWatch>(fleet, key); }});
}

void FleetSources::openNodes(const std::string& name, std::vector<remote::NodeTarget> fixed,
                             const std::vector<std::string>& files, const Access& access,
                             std::optional<double> every) {
    if (!hasFetcher()) {
        return;
    }
    const auto interval =
        every ? std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(*every))
              : remote::NodeProgress::usualInterval;
    auto source = std::make_unique<ListedNodes>(name, std::move(fixed), TargetFiles(files), access,
                                                *m_fetcher, interval);
    const remote::NodesSource& nodes = source->nodes();
    m_opened.push_back(
        {name, std::move(source), [&nodes](std::string_view key) { return nodes.watchOf(key); }});
}

} // namespace vantor::hosts::common
