// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetGroup.hpp"
#include "platform/fleet/FleetSnapshot.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::fleet {

/// The machines in the order in which a wall shows them: the worst first by bands (`bandRank`), inside a band
/// by name, so that a machine moves only when its band changes; groups by their worst machine, then by name.
/// An order holds for ten seconds: what changes meanwhile changes in its place, a machine that is new stands
/// at the end of its group, and one that went leaves the others where they are relative to each other. An
/// order that was made before most machines had told anything is not held. What the user asks for (sorting,
/// grouping, filtering) is done at once. Whoever holds the table says what time it is, on the steady clock.
/// Main thread.
class FleetTable {
public:
    static constexpr std::chrono::seconds holds{10};

    /// Newer figures. Null empties the table.
    void take(std::shared_ptr<const platform::FleetSnapshot> snapshot, std::chrono::nanoseconds now);
    /// Ages grow: figures turn stale, and an order that has been held long enough is made anew. True where a
    /// machine's band or place has changed by that.
    bool passTime(std::chrono::nanoseconds now);

    void orderBy(FleetOrder order, std::chrono::nanoseconds now);
    [[nodiscard]] FleetOrder order() const { return m_order; }
    /// A label's name; empty: no groups.
    void groupBy(std::string label, std::chrono::nanoseconds now);
    /// While a filter is set, all groups are open until they are folded again: what was looked for is seen.
    /// Without it they are as they were.
    void fold(std::string_view group, bool isFolded);
    /// Only machines whose name, or the value of one of whose labels, contains the text, whatever the case of
    /// ASCII letters; empty: all.
    void filter(std::string text, std::chrono::nanoseconds now);
    [[nodiscard]] const std::string& filterText() const { return m_filter; }

    [[nodiscard]] const std::vector<FleetGroup>& groups() const { return m_groups; }
    /// Of all groups, one after the other, folded ones too.
    [[nodiscard]] const std::vector<FleetRow>& rows() const { return m_rows; }
    [[nodiscard]] const FleetCounts& counts() const { return m_counts; }           ///< of the rows
    [[nodiscard]] const std::optional<FleetRow>& worst() const { return m_worst; } ///< of the rows
    [[nodiscard]] std::size_t known() const { return m_snapshot ? m_snapshot->machines.size() : 0; }
    [[nodiscard]] const std::shared_ptr<const platform::FleetSnapshot>& snapshot() const {
        return m_snapshot;
    }
    /// The row of a machine, to keep a cursor on it while rows move; absent where it went or is filtered.
    [[nodiscard]] std::optional<std::size_t> rowOf(std::size_t source, std::string_view key) const;

private:
    using Index = std::uint32_t;
    static constexpr Index nowhere = ~Index{0};
    struct Candidate;

    [[nodiscard]] std::vector<Index> placesAmong(const platform::FleetSnapshot& newer) const;
    [[nodiscard]] bool hasNamesOf(const platform::FleetSnapshot& newer) const;
    void rankNames();
    bool arrange(std::span<const Index> held);
    void arrangeAnew(std::chrono::nanoseconds now);
    [[nodiscard]] bool isShown(const platform::FleetMachine& machine) const;
    [[nodiscard]] std::vector<Candidate> candidates(std::vector<std::string_view>& groupNames) const;
    [[nodiscard]] std::vector<Index> groupPlaces(std::span<const Candidate> candidates,
                                                 std::span<const std::string_view> names, bool isHeld) const;
    void count(FleetGroup& group, const FleetRow& row);
    [[nodiscard]] auto& folded() { return m_filter.empty() ? m_folded : m_foldedAmongFound; }

    std::shared_ptr<const platform::FleetSnapshot> m_snapshot;
    std::chrono::nanoseconds m_now{};
    std::optional<std::chrono::nanoseconds> m_heldSince; ///< absent: the order need not be held
    FleetOrder m_order = FleetOrder::worst;
    std::string m_label;
    std::string m_filter;
    std::string m_smallFilter;
    std::set<std::string, std::less<>> m_folded;
    std::set<std::string, std::less<>> m_foldedAmongFound; ///< under this filter
    std::vector<Index> m_nameRanks;                        ///< by machine of the snapshot
    std::vector<Index> m_rowOf;                            ///< by machine of the snapshot
    std::vector<FleetRow> m_rows;
    std::vector<FleetGroup> m_groups;
    FleetCounts m_counts;
    std::optional<FleetRow> m_worst;
};

} // namespace vantor::fleet
