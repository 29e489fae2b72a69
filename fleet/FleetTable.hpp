// SPDX-License-Identifier: MIT
#pragma once

#include "fleet/FleetBand.hpp"
#include "platform/fleet/FleetSnapshot.hpp"

#include <array>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vantor::fleet {

/// By what machines are ordered; all but `name` also say which figure gives a machine its colour.
enum class FleetOrder : std::uint8_t { worst, name, memory, storage, processor, network };

/// A machine's place in the wall.
struct FleetRow {
    const platform::FleetMachine* machine = nullptr;  ///< in the table's snapshot
    Band band = Band::unknown;                        ///< by the figure that is sorted by
    std::optional<platform::FleetFigure> figure;      ///< which that is: of "worst" the one nearest its limit
    std::optional<std::chrono::duration<double>> age; ///< of its reading; absent where there is none
};

/// How many machines are in which band.
struct FleetCounts {
    std::size_t machines = 0; ///< all of them; "998 of 1,000" are those neither down nor unknown
    std::array<std::size_t, bandCount> inBand{};

    [[nodiscard]] std::size_t of(Band band) const { return inBand.at(static_cast<std::size_t>(band)); }
    [[nodiscard]] std::size_t answering() const { return machines - of(Band::down) - of(Band::unknown); }
};

/// Machines with the same value of the label that is grouped by, or all where none is.
struct FleetGroup {
    std::string name; ///< the value; empty for machines without one, and where nothing is grouped
    bool isFolded = false;
    FleetCounts counts;
    std::size_t first = 0; ///< of its rows
    std::size_t size = 0;  ///< how many, folded or not
    std::optional<FleetRow>
        worst; ///< the worst that answers, by the worst of its figures; absent where all is green
};

/// The machines in the order in which a wall shows them: groups by name, in each the worst first by bands
/// (FleetBand.hpp) and inside a band by name, so that a machine moves only when its band changes. An order
/// holds for ten seconds: what changes meanwhile changes in its place, a machine that is new stands at the
/// end of its group, and one that went leaves the others where they are relative to each other. What the
/// user asks for (sorting, grouping, filtering) is done at once. Pure: whoever holds it says what time it is,
/// on the steady clock. Main thread.
class FleetTable {
public:
    static constexpr std::chrono::seconds holds{10};

    /// Newer figures. Null empties the table.
    void take(std::shared_ptr<const platform::FleetSnapshot> snapshot, std::chrono::nanoseconds now);
    /// Ages grow: figures turn stale, and an order that has been held long enough is made anew. True where
    /// anything that is shown may have changed.
    bool passTime(std::chrono::nanoseconds now);

    void orderBy(FleetOrder order, std::chrono::nanoseconds now);
    [[nodiscard]] FleetOrder order() const { return m_order; }
    /// A label's name; empty: no groups.
    void groupBy(std::string label, std::chrono::nanoseconds now);
    void fold(std::string_view group, bool isFolded);
    /// Machines whose name, or the value of one of whose labels, contains the text, whatever its case; empty:
    /// all.
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
    std::shared_ptr<const platform::FleetSnapshot> m_snapshot;
    FleetOrder m_order = FleetOrder::worst;
    std::string m_label;
    std::string m_filter;
    std::set<std::string, std::less<>> m_folded;
    std::vector<FleetRow> m_rows;
    std::vector<FleetGroup> m_groups;
    FleetCounts m_counts;
    std::optional<FleetRow> m_worst;
};

} // namespace vantor::fleet
