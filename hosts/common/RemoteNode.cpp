// SPDX-License-Identifier: MIT
#include "hosts/common/RemoteNode.hpp"

#include "hosts/common/FleetFile.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/common/HostMachine.hpp"
#include "hosts/common/RemotePlace.hpp"
#include "hosts/common/StandardStreams.hpp"
#include "platform/core/PrintableText.hpp"
#include "platform/foundation/NSLocalizedString.hpp"
#include "platform/posix/RegularFile.hpp"
#include "platform/posix/UserFolders.hpp"
#include "platform/remote/NodeWatch.hpp"

#include <unistd.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <utility>

namespace vantor::hosts::common {

using platform::NSLocalizedString;
using platform::textWithValue;
namespace remote = platform::remote;

namespace {

/// For whoever meets a closed door: exporters have no password of their own, so the safe ways come first.
constexpr const char* howToReach =
    R"(Nothing listens there. On the machine to be watched, Debian and its kin need
  apt install prometheus-node-exporter
It answers everybody who can reach it. To keep it to itself, set
  ARGS="--web.listen-address=127.0.0.1:9100"
in its /etc/default/prometheus-node-exporter, restart it, and come through SSH:
  ssh -N -L 9101:localhost:9100 MACHINE     and here:  --node localhost:9101
Or give it a certificate (its option --web.config.file) and name it as
  --node https://MACHINE:9100
)";

constexpr std::size_t longestList = std::size_t{1} << 20; // bytes

std::string clockTime(std::chrono::system_clock::time_point time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    ::localtime_r(&seconds, &parts);
    char text[16];
    return {text, std::strftime(text, sizeof text, "%H:%M", &parts)};
}

std::string wholeSeconds(std::chrono::duration<double> time) {
    return std::to_string(std::lround(time.count()));
}

} // namespace

struct RemoteNode::Parts {
    std::unique_ptr<remote::Fetcher> fetcher;
    std::string problem; ///< why there is none
    std::string notes;   ///< lines about the list
    std::string name;
    std::unique_ptr<remote::MachineWatch> watch;
    std::shared_ptr<RemotePlace> place;
    bool isShown = false; ///< in that place
    std::function<void()> handler;
    std::string told; ///< on standard error
};

std::optional<FleetNode> RemoteNode::chosen(const NodeChoice& choice, Parts& parts) {
    if (!choice.address.empty()) {
        return FleetNode{*remote::nodeAddress(choice.address, parts.problem), nullptr, std::nullopt};
    }
    const std::string folder = platform::posix::UserFolders::fromEnvironment().config + "/vantor";
    const std::string path = folder + "/fleet.json";
    const std::string name = platform::printableText(path, 4096) + ": ";
    const std::optional<std::string> text =
        askAbout(path, [&path] { return platform::posix::readRegularFile(path, longestList); });
    if (!text || text->empty()) {
        parts.problem = name + "cannot be read, or holds nothing";
        return std::nullopt;
    }
    std::string problem;
    std::vector<std::string> notes;
    std::optional<FleetNode> node = fleetNode(*text, folder, choice.machine, problem, notes);
    for (const std::string& note : notes) {
        parts.notes += name + note + '\n';
    }
    parts.problem = name + platform::printableText(problem, 4096);
    return node;
}

std::string RemoteNode::problemWith(const std::string& address) {
    std::string problem;
    return remote::nodeAddress(address, problem) ? std::string() : problem;
}

RemoteNode::RemoteNode(const NodeChoice& choice) : m_parts(std::make_unique<Parts>()) {
    const std::optional<FleetNode> node = chosen(choice, *m_parts);
    if (node) {
        m_parts->fetcher = remote::openFetcher(m_parts->problem);
    }
    if (m_parts->fetcher != nullptr) {
        constexpr double usualSeconds = 5;
        const std::chrono::duration<double> every(choice.every.value_or(node->every.value_or(usualSeconds)));
        m_parts->watch = std::make_unique<remote::NodeWatch>(
            node->address, *m_parts->fetcher, std::chrono::ceil<std::chrono::milliseconds>(every),
            node->access);
        m_parts->watch->setHandler([this] { take(); });
        m_parts->name = node->address.name;
        m_parts->place = std::make_shared<RemotePlace>();
    }
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
    writeUnhurried(STDERR_FILENO, program + ": " + name() + ": " + state.problem + '\n' +
                                      (state.wasRefused ? howToReach : ""));
}

bool RemoteNode::await(const std::string& program, bool isPatient) {
    if (m_parts->watch == nullptr) {
        writeUnhurried(STDERR_FILENO, m_parts->notes + program + ": " + m_parts->problem + '\n');
        return false;
    }
    writeUnhurried(STDERR_FILENO, m_parts->notes);
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
    std::string told;
    if (now.downSince) {
        told = textWithValue(NSLocalizedString("host_DOWNSINCE"), "time", clockTime(*now.downSince));
        told = textWithValue(told, "reason", now.problem);
    } else {
        told = textWithValue(NSLocalizedString("host_AVERAGEAGE"), "interval", wholeSeconds(now.interval));
        told = textWithValue(told, "age", wholeSeconds(now.age));
    }
    return name() + " \u00B7 " + told;
}

void RemoteNode::setHandler(std::function<void()> handler) {
    m_parts->handler = std::move(handler);
}

} // namespace vantor::hosts::common
