// SPDX-License-Identifier: MIT
#include "hosts/common/RemoteNode.hpp"

#include "fleet/FleetWords.hpp"
#include "hosts/common/FleetHost.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/common/NodeAdvice.hpp"
#include "hosts/common/RemotePlace.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "platform/remote/MachineWatch.hpp"
#include "platform/remote/fetch/NodeAddress.hpp"

#include <unistd.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace vantor::hosts::common {

namespace remote = platform::remote;

struct RemoteNode::Parts {
    std::unique_ptr<FleetHost> fleet; ///< where it is looked for; null where it was found before
    std::string wanted;               ///< its name; empty: the only one there is
    std::string name;
    std::unique_ptr<remote::MachineWatch> watch;
    std::shared_ptr<RemotePlace> place;
    bool isShown = false; ///< in that place
    std::function<void()> handler;
    std::string told; ///< on standard error
};

std::string RemoteNode::problemWith(const std::string& address) {
    std::string problem;
    return remote::nodeAddress(address, problem) ? std::string() : problem;
}

RemoteNode::RemoteNode(const NodeChoice& choice) : m_parts(std::make_unique<Parts>()) {
    m_parts->place = std::make_shared<RemotePlace>();
    m_parts->wanted = choice.machine;
    FleetChoice among = choice.among;
    among.machine = choice.machine;
    among.every = choice.every;
    if (!choice.address.empty()) {
        among.nodes = {choice.address};
    }
    m_parts->fleet = std::make_unique<FleetHost>(std::move(among));
}

RemoteNode::RemoteNode(std::unique_ptr<remote::MachineWatch> watch, std::string name,
                       std::shared_ptr<RemotePlace> place)
    : m_parts(std::make_unique<Parts>()) {
    m_parts->watch = std::move(watch);
    m_parts->name = std::move(name);
    m_parts->place = std::move(place);
    m_parts->watch->setHandler([this] { take(); });
    take();
}

RemoteNode::~RemoteNode() = default;

void RemoteNode::take() {
    const remote::NodeState& state = m_parts->watch->state();
    if (state.figures) {
        show(state);
    }
    if (m_parts->handler) {
        m_parts->handler();
    }
}

void RemoteNode::show(const remote::NodeState& state) {
    std::unique_ptr<remote::RemoteMachine>& machine = m_parts->place->machine;
    const bool isNew = !std::exchange(m_parts->isShown, true);
    if (machine == nullptr) {
        machine = std::make_unique<remote::RemoteMachine>(*state.figures);
    } else if (isNew) {
        machine->turnTo(*state.figures);
    }
    if (!state.problem.empty()) {
        machine->lose(state.problem);
    } else if (!isNew) {
        machine->show(*state.figures);
    }
}

void RemoteNode::start() {
    m_parts->watch->start();
}

bool RemoteNode::isReady() const {
    return m_parts->isShown;
}

void RemoteNode::tell(const std::string& program) {
    const remote::NodeState& state = m_parts->watch->state();
    if (std::exchange(m_parts->told, state.problem) == state.problem || state.problem.empty()) {
        return;
    }
    writeUnhurried(STDERR_FILENO,
                   program + ": " + name() + ": " + state.problem + '\n' + adviceFor(state.problem));
}

/// The machine that is wanted, under the name that it goes by or that the user gave it.
const platform::FleetMachine* RemoteNode::found(const platform::FleetSnapshot* snapshot) const {
    if (snapshot == nullptr) {
        return nullptr;
    }
    const std::string& wanted = m_parts->wanted;
    std::string problem;
    const std::optional<remote::NodeAddress> address = remote::nodeAddress(wanted, problem);
    const auto& machines = snapshot->machines;
    const auto isCalled = [&](const platform::FleetMachine& machine) {
        const auto labels = machine.labels;
        return machine.name == wanted || (address && machine.key == address->url) ||
               (labels != nullptr &&
                std::ranges::find(*labels, std::pair(std::string("instance"), wanted)) != labels->end());
    };
    const auto machine = wanted.empty() ? machines.begin() : std::ranges::find_if(machines, isCalled);
    return machine != machines.end() ? &*machine : nullptr;
}

/// Looks for the machine where it may be known. False where it is not, or nobody answers the hurried.
bool RemoteNode::look(const std::string& program, bool isPatient) {
    FleetHost& fleet = *m_parts->fleet;
    if (!fleet.open(program)) {
        return false;
    }
    platform::FleetSource& source = fleet.source();
    std::shared_ptr<const platform::FleetSnapshot> snapshot = source.snapshot();
    if (found(snapshot.get()) == nullptr) {
        source.start();
        turnUntil(
            [&] {
                fleet.tellSilent(program, FleetHost::Silent::sources);
                snapshot = source.snapshot();
                const bool isTold = source.isSettled() && snapshot != nullptr &&
                                    std::ranges::none_of(snapshot->sources, &platform::FleetOrigin::isSilent);
                return found(snapshot.get()) != nullptr || isTold || (source.isSettled() && !isPatient);
            },
            std::numeric_limits<std::int32_t>::max());
        source.pause();
    }
    const platform::FleetMachine* const machine = found(snapshot.get());
    m_parts->watch = machine != nullptr ? fleet.watchOf(*machine) : nullptr;
    if (m_parts->watch == nullptr) {
        writeUnhurried(STDERR_FILENO, program + ": there is no machine \"" +
                                          platform::printableText(m_parts->wanted, 128) + "\"\n");
        return false;
    }
    m_parts->name = machine->name;
    m_parts->watch->setHandler([this] { take(); });
    return true;
}

bool RemoteNode::await(const std::string& program, bool isPatient) {
    if (m_parts->watch == nullptr && !look(program, isPatient)) {
        return false;
    }
    start();
    turnUntil(
        [&] {
            tell(program);
            const bool hasFailed = !m_parts->watch->state().problem.empty();
            return isReady() || (hasFailed && !isPatient);
        },
        std::numeric_limits<std::int32_t>::max());
    return isReady();
}

platform::Machine& RemoteNode::machine() {
    return *m_parts->place->machine;
}

const std::string& RemoteNode::name() const {
    return m_parts->name;
}

NodeMoment RemoteNode::moment() const {
    const remote::NodeState& state = m_parts->watch->state();
    NodeMoment moment;
    moment.interval = state.figures ? state.figures->interval : std::chrono::nanoseconds(0);
    moment.age = std::chrono::steady_clock::now().time_since_epoch() - state.taken;
    moment.sampled = std::chrono::system_clock::now() -
                     std::chrono::duration_cast<std::chrono::system_clock::duration>(moment.age);
    moment.problem = state.problem;
    moment.downSince = state.downSince;
    return moment;
}

std::string RemoteNode::heading() const {
    const NodeMoment now = moment();
    const bool hasTold = m_parts->watch->state().figures.has_value();
    return name() + " \u00B7 " +
           (now.downSince ? fleet::downText(now.downSince, now.problem)
            : hasTold     ? fleet::averageText(now.interval, now.age)
                          : platform::NSLocalizedString("wall_ASKING"));
}

void RemoteNode::setHandler(std::function<void()> handler) {
    m_parts->handler = std::move(handler);
}

} // namespace vantor::hosts::common
