// SPDX-License-Identifier: MIT
#include "hosts/common/FleetHost.hpp"

#include "hosts/common/FleetSources.hpp"
#include "hosts/common/NodeAdvice.hpp"
#include "hosts/common/RemotePlace.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"
#include "platform/remote/sources/FleetOf.hpp"

#include <unistd.h>

#include <chrono>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

namespace vantor::hosts::common {

namespace remote = platform::remote;
using platform::FleetSource;

namespace {

/// Why a machine is silent; empty where it is not, or where all of its source is.
std::string silence(const platform::FleetMachine& machine, const platform::FleetSnapshot& snapshot) {
    if (machine.downSince) {
        return machine.problem.empty() ? "is down" : machine.problem;
    }
    const platform::FleetOrigin& origin = snapshot.sources.at(machine.source);
    if (origin.isSilent) {
        return {};
    }
    if (!machine.taken) {
        return "has told nothing yet";
    }
    const std::chrono::duration<double> age =
        std::chrono::steady_clock::now().time_since_epoch() - *machine.taken;
    return age > origin.staleAfter
               ? "has told nothing for " + std::to_string(std::llround(age.count())) + " s"
               : std::string();
}

} // namespace

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
        std::string line = program;
        line += ": ";
        line += complaint;
        writeUnhurried(STDERR_FILENO, line + '\n');
    }
    const std::vector<FleetSources::Opened>& opened = parts.sources.opened();
    if (opened.size() > 1) {
        std::vector<remote::FleetOf::Part> all;
        all.reserve(opened.size());
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

bool FleetHost::tellSilent(const std::string& program, Silent which) {
    const auto snapshot = source().snapshot();
    constexpr const char* nothingYet = "has told nothing yet";
    if (snapshot == nullptr) { // the only source is still being asked
        if (which == Silent::all && m_parts->silent.insert(m_parts->name).second) {
            writeUnhurried(STDERR_FILENO, program + ": " + m_parts->name + ": " + nothingYet + '\n');
        }
        return which == Silent::all;
    }
    std::set<std::string> silent;
    std::string lines;
    bool isAnySilent = false;
    std::string advice; // of the first who needs one
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
        const bool isUnheard =
            origin.problem.empty() && origin.staleAfter.count() == 0; // as FleetOf joins it
        if (which == Silent::all && isUnheard) {
            tell(origin.name + '\n' + nothingYet, origin.name + ": " + nothingYet);
        }
        isAnySilent = isAnySilent || origin.isSilent || isUnheard;
    }
    for (const platform::FleetMachine& machine : snapshot->machines) {
        const std::string reason = which == Silent::all ? silence(machine, *snapshot) : std::string();
        if (!reason.empty()) {
            tell(std::to_string(machine.source) + '\n' + machine.key, machine.name + ": " + reason);
            isAnySilent = true;
            advice = advice.empty() ? adviceFor(reason) : advice;
        }
    }
    if (!advice.empty() && !std::exchange(m_parts->isAdvised, true)) {
        lines += advice;
    }
    m_parts->silent = std::move(silent);
    writeUnhurried(STDERR_FILENO, lines);
    return isAnySilent;
}

} // namespace vantor::hosts::common
