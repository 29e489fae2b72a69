// SPDX-License-Identifier: MIT
#include "hosts/common/FleetHost.hpp"

#include "hosts/common/FleetSources.hpp"
#include "hosts/common/NodeAdvice.hpp"
#include "hosts/common/RemotePlace.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"
#include "platform/remote/sources/FleetOf.hpp"

#include <unistd.h>

#include <set>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

namespace remote = platform::remote;
using platform::FleetSource;

struct FleetHost::Parts {
    FleetChoice choice;
    std::string name;
    FleetSources sources;
    std::unique_ptr<remote::FleetOf> joined;
    std::shared_ptr<RemotePlace> place = std::make_shared<RemotePlace>();
    std::set<std::string> silent; ///< what was told of
    bool isAdvised = false;
};

std::string FleetHost::problemWith(const FleetChoice& choice) {
    for (const std::string& node : choice.nodes) {
        if (const std::string problem = RemoteNode::problemWith(node); !problem.empty()) {
            return "--node: " + problem;
        }
    }
    std::string problem;
    if (!choice.prometheus.empty() && !remote::prometheusAddress(choice.prometheus, problem)) {
        return "--prometheus: " + problem;
    }
    if (!choice.select.empty()) {
        problem = FleetSources::problemWithSelector(choice.select);
    }
    return problem.empty() ? problem : "--select: " + problem;
}

FleetHost::FleetHost(FleetChoice choice) : m_parts(std::make_unique<Parts>()) {
    m_parts->choice = std::move(choice);
}

FleetHost::~FleetHost() = default;

bool FleetHost::open(const std::string& program) {
    Parts& parts = *m_parts;
    parts.sources.open(parts.choice);
    for (const std::string& complaint : parts.sources.complaints()) {
        writeUnhurried(STDERR_FILENO, program + ": " + complaint + '\n');
    }
    const std::vector<FleetSources::Opened>& opened = parts.sources.opened();
    if (opened.size() > 1) {
        std::vector<remote::FleetOf::Part> all;
        for (const FleetSources::Opened& one : opened) {
            all.push_back({one.source.get(), one.name});
        }
        parts.joined = std::make_unique<remote::FleetOf>(std::move(all));
    }
    parts.name = opened.size() == 1 ? opened.front().name : "fleet";
    if (!opened.empty()) {
        tellSilent(program, Silent::sources); // a list that cannot be read
    }
    return !opened.empty();
}

FleetSource& FleetHost::source() {
    return m_parts->joined != nullptr ? *m_parts->joined : *m_parts->sources.opened().front().source;
}

const std::string& FleetHost::name() const {
    return m_parts->name;
}

std::unique_ptr<remote::MachineWatch> FleetHost::watchOf(const platform::FleetMachine& machine) {
    const std::vector<FleetSources::Opened>& opened = m_parts->sources.opened();
    const std::size_t place = opened.size() > 1 ? machine.source : 0; // one source may have several origins
    return place < opened.size() ? opened[place].watchOf(machine.key) : nullptr;
}

std::unique_ptr<RemoteNode> FleetHost::openMachine(const platform::FleetMachine& machine) {
    std::unique_ptr<remote::MachineWatch> watch = watchOf(machine);
    return watch != nullptr ? std::make_unique<RemoteNode>(std::move(watch), machine.name, m_parts->place)
                            : nullptr;
}

void FleetHost::tellSilent(const std::string& program, Silent which) {
    const auto snapshot = source().snapshot();
    if (snapshot == nullptr) {
        return;
    }
    std::set<std::string> silent;
    std::string lines;
    bool wasRefused = false;
    const auto tell = [&](std::string key, const std::string& line) {
        if (!m_parts->silent.contains(key)) {
            lines += program + ": " + line + '\n';
        }
        silent.insert(std::move(key));
    };
    for (const platform::FleetOrigin& origin : snapshot->sources) {
        if (!origin.problem.empty()) {
            tell(origin.name + '\n' + (origin.isSilent ? "" : origin.problem),
                 origin.name + ": " + origin.problem);
        }
    }
    for (const platform::FleetMachine& machine : snapshot->machines) {
        if (machine.downSince && which == Silent::all) {
            tell(std::to_string(machine.source) + '\n' + machine.key, machine.name + ": " + machine.problem);
            wasRefused = wasRefused || machine.problem == remote::refusal;
        }
    }
    if (wasRefused && !std::exchange(m_parts->isAdvised, true)) {
        lines += howToReach;
    }
    m_parts->silent = std::move(silent);
    writeUnhurried(STDERR_FILENO, lines);
}

} // namespace vantor::hosts::common
