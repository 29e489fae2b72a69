// SPDX-License-Identifier: MIT
#include "fleet/FleetTable.hpp"

#include "fleet/NameOrder.hpp"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace vantor::fleet {

using platform::FleetMachine;
using platform::FleetSnapshot;

namespace {

auto identityOf(const FleetMachine& machine) {
    return std::tuple<std::size_t, std::string_view>(machine.source, machine.key);
}

} // namespace

void FleetTable::take(std::shared_ptr<const FleetSnapshot> snapshot, std::chrono::nanoseconds now) {
    m_now = now;
    if (snapshot == nullptr) {
        m_snapshot.reset();
        m_rows.clear();
        m_groups.clear();
        m_rowOf.clear();
        m_nameRanks.clear();
        m_counts = {};
        m_worst.reset();
        m_heldSince.reset();
        return;
    }
    const std::vector<Index> places = placesAmong(*snapshot);
    const bool hasSameNames = hasNamesOf(*snapshot);
    const std::shared_ptr<const FleetSnapshot> older = std::exchange(m_snapshot, std::move(snapshot));
    if (!hasSameNames) {
        rankNames();
    }
    if (m_heldSince && now - *m_heldSince < holds) {
        arrange(places);
    } else {
        arrangeAnew(now);
    }
}

bool FleetTable::passTime(std::chrono::nanoseconds now) {
    m_now = now;
    if (m_snapshot == nullptr) {
        return false;
    }
    if (m_heldSince && now - *m_heldSince < holds) {
        const std::vector<Index> places = m_rowOf;
        return arrange(places);
    }
    return arrange({});
}

void FleetTable::arrangeAnew(std::chrono::nanoseconds now) {
    m_now = now;
    if (m_snapshot != nullptr) {
        arrange({});
    }
}

void FleetTable::orderBy(FleetOrder order, std::chrono::nanoseconds now) {
    m_order = order;
    arrangeAnew(now);
}

void FleetTable::groupBy(std::string label, std::chrono::nanoseconds now) {
    m_label = std::move(label);
    arrangeAnew(now);
}

void FleetTable::fold(std::string_view group, bool isFolded) {
    if (isFolded) {
        folded().emplace(group);
    } else if (const auto found = folded().find(group); found != folded().end()) {
        folded().erase(found);
    }
    if (const auto found = std::ranges::find(m_groups, group, &FleetGroup::name); found != m_groups.end()) {
        found->isFolded = isFolded;
    }
}

void FleetTable::filter(std::string text, std::chrono::nanoseconds now) {
    m_filter = std::move(text);
    m_smallFilter = smallLetters(m_filter);
    m_foldedAmongFound.clear();
    arrangeAnew(now);
}

std::optional<std::size_t> FleetTable::rowOf(std::size_t source, std::string_view key) const {
    if (m_snapshot == nullptr) {
        return std::nullopt;
    }
    const std::vector<FleetMachine>& machines = m_snapshot->machines;
    const std::tuple<std::size_t, std::string_view> wanted(source, key);
    const auto found = std::ranges::lower_bound(machines, wanted, std::less<>(), identityOf);
    if (found == machines.end() || identityOf(*found) != wanted) {
        return std::nullopt;
    }
    const Index row = m_rowOf[static_cast<std::size_t>(found - machines.begin())];
    return row == nowhere ? std::nullopt : std::optional<std::size_t>(row);
}

/// The rows that a newer snapshot's machines have now: both lists are in order, so one walk finds them.
std::vector<FleetTable::Index> FleetTable::placesAmong(const FleetSnapshot& newer) const {
    std::vector<Index> places(newer.machines.size(), nowhere);
    if (m_snapshot == nullptr) {
        return places;
    }
    const std::vector<FleetMachine>& machines = m_snapshot->machines;
    std::size_t older = 0;
    for (std::size_t i = 0; i < newer.machines.size(); i++) {
        const auto wanted = identityOf(newer.machines[i]);
        while (older < machines.size() && identityOf(machines[older]) < wanted) {
            older++;
        }
        if (older < machines.size() && identityOf(machines[older]) == wanted) {
            places[i] = m_rowOf[older];
        }
    }
    return places;
}

bool FleetTable::hasNamesOf(const FleetSnapshot& newer) const {
    return m_snapshot != nullptr && std::ranges::equal(m_snapshot->machines, newer.machines, {},
                                                       &FleetMachine::name, &FleetMachine::name);
}

void FleetTable::rankNames() {
    const std::vector<FleetMachine>& machines = m_snapshot->machines;
    std::vector<Index> byName(machines.size());
    std::iota(byName.begin(), byName.end(), Index{0});
    std::ranges::stable_sort(byName, [&](Index one, Index other) {
        return comesBefore(machines[one].name, machines[other].name);
    });
    m_nameRanks.resize(machines.size());
    for (std::size_t rank = 0; rank < byName.size(); rank++) {
        m_nameRanks[byName[rank]] = static_cast<Index>(rank);
    }
}

} // namespace vantor::fleet
