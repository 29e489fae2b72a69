// SPDX-License-Identifier: MIT
#include "fleet/FleetTable.hpp"
#include "fleet/NameOrder.hpp"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace vantor::fleet {

using platform::FleetMachine;

/// A machine that is shown, before it has its place.
struct FleetTable::Candidate {
    FleetRow row;
    Index machine = 0;
    Index group = 0; ///< in the order in which they are met
    std::uint8_t rank = 0;
};

namespace {

std::string_view labelOf(const FleetMachine& machine, std::string_view label) {
    if (!label.empty() && machine.labels != nullptr) {
        for (const auto& [name, value] : *machine.labels) {
            if (name == label) {
                return value;
            }
        }
    }
    return {};
}

/// What to sort by, in one number: group, then rank, then place. And whom it belongs to.
struct SortKey {
    std::uint64_t key;
    std::size_t candidate;
};

std::uint64_t keyOf(std::uint64_t group, std::uint8_t rank, std::uint64_t place) {
    constexpr unsigned placeBits = 33; // a machine's old row, or its name's rank after all old rows
    constexpr unsigned rankBits = 8;
    return group << (placeBits + rankBits) | std::uint64_t{rank} << placeBits | place;
}

bool isLevel(const FleetRow& row) {
    return row.band >= Band::red && row.band <= Band::green;
}

double share(const FleetRow& row) {
    return row.machine->figure(*row.figure).value_or(0);
}

void takeWorse(std::optional<FleetRow>& worst, const FleetRow& row) {
    if (isLevel(row) && (!worst || share(row) > share(*worst))) {
        worst = row;
    }
}

} // namespace

bool FleetTable::isShown(const FleetMachine& machine) const {
    if (m_filter.empty()) {
        return true;
    }
    const auto isMeant = [this](const auto& label) { return containsSmall(label.second, m_smallFilter); };
    return containsSmall(machine.name, m_smallFilter) ||
           (machine.labels != nullptr && std::ranges::any_of(*machine.labels, isMeant));
}

std::vector<FleetTable::Candidate> FleetTable::candidates(std::vector<std::string_view>& groupNames) const {
    std::vector<Candidate> shown;
    shown.reserve(m_snapshot->machines.size());
    std::unordered_map<std::string_view, Index> groups;
    Index index = 0;
    for (const FleetMachine& machine : m_snapshot->machines) {
        if (isShown(machine)) {
            const std::string_view name = labelOf(machine, m_label);
            const auto [group, isNew] = groups.try_emplace(name, static_cast<Index>(groups.size()));
            if (isNew) {
                groupNames.push_back(name);
            }
            const Standing standing = standingOf(machine, *m_snapshot, m_order, m_now);
            shown.push_back(
                {{standing, &machine}, index, group->second, bandRank(standing, machine, m_order)});
        }
        index++;
    }
    return shown;
}

/// Where each group stands: by its worst machine and its name, the nameless last; in an order that is held
/// where it stood, and new ones behind.
std::vector<FleetTable::Index> FleetTable::groupPlaces(std::span<const Candidate> candidates,
                                                       std::span<const std::string_view> names,
                                                       bool isHeld) const {
    std::vector<std::size_t> first(names.size(), isHeld ? m_groups.size() : SIZE_MAX);
    if (isHeld) {
        std::unordered_map<std::string_view, std::size_t> old;
        for (std::size_t i = 0; i < m_groups.size(); i++) {
            old.emplace(m_groups[i].name, i);
        }
        for (std::size_t i = 0; i < names.size(); i++) {
            const auto found = old.find(names[i]);
            first[i] = found != old.end() ? found->second : m_groups.size();
        }
    } else {
        for (const Candidate& candidate : candidates) {
            first[candidate.group] = std::min<std::size_t>(first[candidate.group], candidate.rank);
        }
    }
    std::vector<Index> order(names.size());
    std::iota(order.begin(), order.end(), Index{0});
    std::ranges::sort(order, [&](Index one, Index other) {
        if (first[one] != first[other]) {
            return first[one] < first[other];
        }
        return names[one].empty() != names[other].empty() ? names[other].empty()
                                                          : comesBefore(names[one], names[other]);
    });
    std::vector<Index> places(names.size());
    for (std::size_t place = 0; place < order.size(); place++) {
        places[order[place]] = static_cast<Index>(place);
    }
    return places;
}

void FleetTable::count(FleetGroup& group, const FleetRow& row) {
    const bool isSilent = row.band == Band::down || !row.age;
    for (FleetCounts* const counts : {&group.counts, &m_counts}) {
        counts->machines++;
        counts->silent += isSilent ? 1 : 0;
        counts->inBand.at(static_cast<std::size_t>(row.band))++;
    }
    const bool isByShare = m_order != FleetOrder::network;
    const FleetRow judged =
        isByShare ? row
                  : FleetRow{standingOf(*row.machine, *m_snapshot, FleetOrder::worst, m_now), row.machine};
    takeWorse(group.worst, judged);
    takeWorse(m_worst, judged);
}

/// Makes rows and groups of the snapshot: anew, or with the places that machines have held. True where a
/// machine's band or place is another than before.
bool FleetTable::arrange(std::span<const Index> held) {
    const bool isHeld = !held.empty();
    std::vector<std::string_view> names;
    const std::vector<Candidate> shown = candidates(names);
    const std::vector<Index> groupPlace = groupPlaces(shown, names, isHeld);
    std::vector<SortKey> keys;
    keys.reserve(shown.size());
    for (const Candidate& candidate : shown) {
        constexpr std::uint64_t afterAll = std::uint64_t{1} << 32U;
        const Index name = m_nameRanks[candidate.machine];
        const bool stays = isHeld && held[candidate.machine] != nowhere;
        const std::uint64_t place = stays ? held[candidate.machine] : isHeld ? afterAll + name : name;
        keys.push_back({keyOf(groupPlace[candidate.group], isHeld ? std::uint8_t{0} : candidate.rank, place),
                        keys.size()});
    }
    std::ranges::sort(keys, {}, &SortKey::key);

    std::vector<FleetRow> rows;
    rows.reserve(keys.size());
    m_rowOf.assign(m_snapshot->machines.size(), nowhere);
    m_groups.clear();
    m_counts = {};
    m_worst.reset();
    Index last = nowhere;
    for (const SortKey& key : keys) {
        const Candidate& candidate = shown[key.candidate];
        if (m_groups.empty() || candidate.group != last) {
            last = candidate.group;
            FleetGroup group;
            group.name = names[last];
            group.isFolded = folded().contains(names[last]);
            group.first = rows.size();
            m_groups.push_back(std::move(group));
        }
        m_rowOf[candidate.machine] = static_cast<Index>(rows.size());
        rows.push_back(candidate.row);
        m_groups.back().size++;
        count(m_groups.back(), candidate.row);
    }
    if (!isHeld) {
        const bool hasMostTold = m_counts.silent - m_counts.of(Band::down) <= m_counts.machines / 2;
        m_heldSince = hasMostTold ? std::optional(m_now) : std::nullopt;
    }
    const bool isSame = std::ranges::equal(rows, m_rows, [](const FleetRow& one, const FleetRow& other) {
        return one.machine == other.machine && one.band == other.band;
    });
    m_rows = std::move(rows);
    return !isSame;
}

} // namespace vantor::fleet
