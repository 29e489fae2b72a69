// SPDX-License-Identifier: MIT
#include "platform/remote/sources/WatchedNode.hpp"

#include "platform/core/PrintableText.hpp"
#include "platform/linux/figures/TickAccount.hpp"
#include "platform/remote/readings/VolumeChoice.hpp"

#include <algorithm>
#include <utility>

namespace vantor::platform::remote {

namespace {

/// A host that says nothing to people: the machine's own name is better.
bool isNoName(const NodeAddress& address) {
    const std::string_view name = address.name;
    const std::string_view host = name.substr(0, name.starts_with('[') ? name.find(']') : name.find(':'));
    return name.starts_with('[') || host == "localhost" ||
           host.find_first_not_of("0123456789.") == std::string_view::npos;
}

std::array<std::optional<double>, 5> sharesOf(const NodeFigures& figures) {
    std::array<std::optional<double>, 5> shares;
    const auto set = [&shares](FleetFigure figure, double value) {
        shares.at(static_cast<std::size_t>(figure)) = value;
    };
    if (const auto& memory = figures.memory; memory && memory->total > 0) {
        set(FleetFigure::memory,
            static_cast<double>(memory->total - memory->free) / static_cast<double>(memory->total));
    }
    if (figures.storage) {
        set(FleetFigure::storage, usedShare(*figures.storage));
    }
    if (figures.processor) {
        const auto all = static_cast<double>(linux::sum(*figures.processor));
        set(FleetFigure::processor, 1 - static_cast<double>(figures.processor->idle) / all);
    }
    if (figures.network) {
        set(FleetFigure::received, figures.network->received);
        set(FleetFigure::sent, figures.network->sent);
    }
    return shares;
}

} // namespace

WatchedNode::WatchedNode(NodeTarget target, std::chrono::milliseconds interval)
    : m_target(std::move(target)), m_progress(interval, mayFilter(m_target.address)) {}

void WatchedNode::describe(const NodeTarget& target) {
    m_target = target;
}

void WatchedNode::take(NodeTold told) {
    const bool hasReading = told.reading.has_value();
    const bool isFirst = hasReading && !m_progress.state().figures;
    std::optional<NodeFigures> figures;
    if (isFirst) { // what is no rate
        figures = figuresBetween(*told.reading, *told.reading);
    }
    if (hasReading && isNoName(m_target.address)) {
        m_ownName = printableText(told.reading->nodeName);
    }
    const std::chrono::duration<double> wait = m_progress.take(std::move(told));
    const Instant now = RunLoop::main().now();
    // An answer's own delay is no reason to ask later; a silent one is left alone from now on.
    due = std::max(now, (hasReading ? asked : now) + std::chrono::ceil<Instant::duration>(wait));
    if (!hasReading) {
        return;
    }
    const NodeState& state = m_progress.state();
    figures = state.figures ? state.figures : figures;
    m_figures = sharesOf(*figures);
    m_volume = figures->storage ? printableText(figures->storage->mountPoint) : std::string();
    m_taken = state.taken;
}

bool WatchedNode::isSettled() const {
    return m_progress.state().figures || !m_progress.state().problem.empty();
}

FleetMachine WatchedNode::machine(const std::string& name) const {
    FleetMachine machine;
    machine.key = m_target.address.url;
    machine.name = name;
    machine.labels = m_target.labels;
    machine.volume = m_volume;
    machine.figures = m_figures;
    machine.taken = m_taken;
    machine.downSince = m_progress.state().downSince;
    machine.problem = m_progress.state().problem;
    return machine;
}

} // namespace vantor::platform::remote
