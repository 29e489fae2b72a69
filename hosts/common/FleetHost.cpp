// SPDX-License-Identifier: MIT
#include "hosts/common/FleetHost.hpp"

#include "hosts/common/RemotePlace.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "platform/remote/sources/FleetOf.hpp"
#include "platform/remote/sources/NodesSource.hpp"

#include <unistd.h>

#include <chrono>
#include <functional>
#include <utility>

namespace vantor::hosts::common {

namespace remote = platform::remote;
using platform::FleetSource;

namespace {

/// A source, and how one of its machines is watched by its key.
struct OpenSource {
    std::unique_ptr<FleetSource> source;
    std::function<std::unique_ptr<remote::MachineWatch>(const std::string& key)> watchOf;
};

std::chrono::milliseconds interval(const std::optional<double>& every) {
    return every ? std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(*every))
                 : remote::NodeProgress::usualInterval;
}

} // namespace

bool FleetChoice::isWall() const {
    return machine.empty() &&
           (nodes.size() > 1 || !nodesFile.empty() || !prometheus.empty() || listed || demo > 0);
}

bool FleetChoice::isOne() const {
    return !machine.empty() || (nodes.size() == 1 && !isWall());
}

struct FleetHost::Parts {
    FleetChoice choice;
    std::string name;
    std::string problem;
    std::unique_ptr<remote::Fetcher> fetcher;
    std::vector<OpenSource> sources;
    std::unique_ptr<remote::FleetOf> joined;
    std::shared_ptr<RemotePlace> place = std::make_shared<RemotePlace>();

    bool openFetcher();
    void openNodes();
};

bool FleetHost::Parts::openFetcher() {
    fetcher = remote::openFetcher(problem);
    return fetcher != nullptr;
}

void FleetHost::Parts::openNodes() {
    std::vector<remote::NodeTarget> targets;
    for (const std::string& node : choice.nodes) {
        targets.push_back({*remote::nodeAddress(node, problem)});
    }
    auto source = std::make_unique<remote::NodesSource>("nodes", *fetcher, interval(choice.every));
    source->watch(targets);
    sources.push_back(
        {nullptr, [nodes = source.get()](const std::string& key) { return nodes->watchOf(key); }});
    sources.back().source = std::move(source);
}

std::string FleetHost::problemWith(const FleetChoice& choice) {
    for (const std::string& node : choice.nodes) {
        if (const std::string problem = RemoteNode::problemWith(node); !problem.empty()) {
            return "--node: " + problem;
        }
    }
    return {};
}

FleetHost::FleetHost(FleetChoice choice) : m_parts(std::make_unique<Parts>()) {
    m_parts->choice = std::move(choice);
}

FleetHost::~FleetHost() = default;

bool FleetHost::open(const std::string& program) {
    Parts& parts = *m_parts;
    if (!parts.choice.nodes.empty() && parts.openFetcher()) {
        parts.openNodes();
    }
    if (parts.sources.empty()) {
        writeUnhurried(STDERR_FILENO, program + ": " + parts.problem + '\n');
        return false;
    }
    if (parts.sources.size() > 1) {
        std::vector<FleetSource*> all;
        for (const OpenSource& open : parts.sources) {
            all.push_back(open.source.get());
        }
        parts.joined = std::make_unique<remote::FleetOf>(std::move(all));
    }
    const auto snapshot = source().snapshot();
    parts.name = parts.sources.size() == 1 && snapshot != nullptr ? snapshot->sources.front().name : "fleet";
    return true;
}

FleetSource& FleetHost::source() {
    return m_parts->joined != nullptr ? *m_parts->joined : *m_parts->sources.front().source;
}

const std::string& FleetHost::name() const {
    return m_parts->name;
}

std::unique_ptr<RemoteNode> FleetHost::openMachine(const platform::FleetMachine& machine) {
    std::size_t first = 0; // of a source's origins in the joined snapshot
    for (const OpenSource& open : m_parts->sources) {
        const auto snapshot = open.source->snapshot();
        const std::size_t origins = snapshot != nullptr ? snapshot->sources.size() : 0;
        if (machine.source >= first && machine.source < first + origins) {
            std::unique_ptr<remote::MachineWatch> watch = open.watchOf(machine.key);
            return watch != nullptr
                       ? std::make_unique<RemoteNode>(std::move(watch), machine.name, m_parts->place)
                       : nullptr;
        }
        first += origins;
    }
    return nullptr;
}

} // namespace vantor::hosts::common
