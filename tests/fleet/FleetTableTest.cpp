// SPDX-License-Identifier: MIT
#include "fleet/FleetTable.hpp"

#include "fleet/NameOrder.hpp"
#include "platform/simulated/SimulatedFleet.hpp"
#include "platform/time/RunLoop.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>

namespace {

using namespace vantor;
using namespace vantor::fleet;
using namespace std::chrono_literals;
using platform::FleetFigure;
using platform::FleetMachine;
using platform::FleetSnapshot;

constexpr std::chrono::nanoseconds start = 1000s;

FleetMachine machine(const std::string& name, std::optional<double> memory, const std::string& role = {},
                     std::chrono::nanoseconds taken = start) {
    FleetMachine made;
    made.key = name + ":9100";
    made.name = name;
    made.figures.at(0) = memory;
    made.taken = taken;
    if (!role.empty()) {
        made.labels = std::make_shared<const std::vector<std::pair<std::string, std::string>>>(
            std::vector<std::pair<std::string, std::string>>{{"dc", "Fra1"}, {"role", role}});
    }
    return made;
}

FleetMachine down(const std::string& name, const std::string& role = {}) {
    FleetMachine made = machine(name, 0.99, role);
    made.downSince = std::chrono::system_clock::now();
    return made;
}

std::shared_ptr<FleetSnapshot> snapshotOf(std::vector<FleetMachine> machines) {
    auto made = std::make_shared<FleetSnapshot>();
    made->sources.push_back({"home", 5s, 15s, start, {}, false});
    std::ranges::sort(machines, {}, &FleetMachine::key);
    made->machines = std::move(machines);
    return made;
}

/// "a× b c~": the rows with their signs, groups set apart by bars.
std::string told(const FleetTable& table) {
    std::string text;
    for (const FleetGroup& group : table.groups()) {
        text += (text.empty() ? "" : "| ") + (group.name.empty() ? "" : group.name + ": ");
        for (const FleetRow& row : std::span(table.rows()).subspan(group.first, group.size)) {
            text += row.machine->name + bandSign(row.band) + " ";
        }
    }
    return text;
}

TEST(FleetTable, OrdersByBandsAndThenByNamesAsPeopleCount) {
    FleetTable table;
    FleetMachine silent = machine("a0", std::nullopt);
    silent.taken.reset();
    table.take(snapshotOf({machine("web10", 0.2), machine("web2", 0.6), machine("b", 0.7), machine("d", 0.84),
                           machine("c", 0.97), down("z"), machine("x", 0.95, "", start - 16s), silent}),
               start);
    // Green and yellow are one, and what is not known is no worse than they.
    EXPECT_EQ("z× c d b a0– web2 web10 x~ ", told(table));
    EXPECT_EQ("c", table.worst()->machine->name);
    EXPECT_EQ(6U, table.counts().answering());
    EXPECT_EQ(2U, table.counts().of(Band::red));
    EXPECT_EQ(1U, table.counts().of(Band::stale));
    table.orderBy(FleetOrder::name, start);
    EXPECT_EQ("a0– b c d web2 web10 x~ z× ", told(table));
    EXPECT_TRUE(comesBefore("Web2", "web10") && comesBefore("web9", "web009a") && !comesBefore("b", "b"));
}

TEST(FleetTable, HoldsAnOrderForTenSeconds) {
    FleetTable table;
    table.take(snapshotOf({machine("a", 0.1), machine("b", 0.9), machine("c", 0.1)}), start);
    EXPECT_EQ("b a c ", told(table));
    table.take(snapshotOf({machine("a", 0.1), machine("b", 0.1), machine("c", 0.9)}), start + 5s);
    EXPECT_EQ("b a c ", told(table)) << "its band changes at once, its place does not";
    EXPECT_EQ(Band::red, table.rows().back().band);
    EXPECT_FALSE(table.passTime(start + 9s));
    EXPECT_TRUE(table.passTime(start + 10s));
    EXPECT_EQ("c a b ", told(table));
    EXPECT_FALSE(table.passTime(start + 15s));
    EXPECT_TRUE(table.passTime(start + 16s)) << "they turned stale";
    EXPECT_EQ("c~ a~ b~ ", told(table));
}

TEST(FleetTable, StaysSteadyWhenAMachineComesAndGoes) {
    FleetTable table;
    const auto all = snapshotOf({machine("a", 0.9), machine("b", 0.1), machine("c", 0.9)});
    table.take(all, start);
    EXPECT_EQ("a c b ", told(table));
    table.take(snapshotOf({machine("b", 0.9), machine("c", 0.9)}), start + 1s);
    EXPECT_EQ("c b ", told(table));
    EXPECT_FALSE(table.rowOf(0, "a:9100"));
    table.take(all, start + 2s);
    EXPECT_EQ("c b a ", told(table));
    EXPECT_EQ(2U, table.rowOf(0, "a:9100"));
    table.orderBy(FleetOrder::memory, start + 3s);
    EXPECT_EQ("a c b ", told(table)) << "what the user asks for does not wait";
}

TEST(FleetTable, DoesNotHoldAnOrderFromBeforeMachinesAnswered) {
    FleetTable table;
    FleetMachine a = machine("a", std::nullopt);
    FleetMachine b = machine("b", std::nullopt);
    a.taken.reset();
    b.taken.reset();
    table.take(snapshotOf({a, b}), start);
    table.take(snapshotOf({machine("a", 0.1), machine("b", 0.9)}), start + 1s);
    EXPECT_EQ("b a ", told(table));
    EXPECT_TRUE(table.worst());
    table.take(nullptr, start + 2s);
    EXPECT_EQ("", told(table));
    EXPECT_FALSE(table.worst() || table.counts().machines || table.rowOf(0, "a:9100"));
}

TEST(FleetTable, GroupsByALabelWorstFirst) {
    FleetTable table;
    table.groupBy("role", start);
    table.take(snapshotOf({machine("a1", 0.1, "app"), machine("w1", 0.1, "web"), down("w2", "web"),
                           machine("d1", 0.9, "db"), machine("d2", 0.3, "db"), machine("n", 0.2)}),
               start);
    EXPECT_EQ("web: w2× w1 | db: d1 d2 | app: a1 | n ", told(table));
    EXPECT_EQ(1U, table.groups().front().counts.answering());
    EXPECT_EQ("w1", table.groups().front().worst->machine->name) << "what is down has no share of now";
    table.fold("db", true);
    EXPECT_TRUE(table.groups().at(1).isFolded);
    // Groups stand as long as machines do.
    table.take(snapshotOf({machine("c", 0.99, "cache"), machine("w1", 0.1, "web"), machine("d1", 0.1, "db")}),
               start + 5s);
    EXPECT_EQ("web: w1 | db: d1 | cache: c ", told(table));
    EXPECT_TRUE(table.groups().at(1).isFolded);
    table.passTime(start + 10s);
    EXPECT_EQ("cache: c | db: d1 | web: w1 ", told(table));
    // What is looked for is seen, also behind a fold, which is there again afterwards.
    const auto isFolded = [&table] { return table.groups().front().isFolded; };
    table.filter("d1", start + 10s);
    EXPECT_FALSE(isFolded());
    table.fold("db", true);
    table.passTime(start + 11s);
    EXPECT_TRUE(isFolded()) << "asked for among what was found";
    table.filter("d", start + 12s);
    EXPECT_FALSE(isFolded());
    table.filter("", start + 13s);
    EXPECT_TRUE(table.groups().at(1).isFolded);
    table.fold("db", false);
    EXPECT_FALSE(table.groups().at(1).isFolded);
}

TEST(FleetTable, FiltersByNamesAndLabels) {
    FleetTable table;
    table.take(snapshotOf({machine("Web1", 0.9, "front"), machine("db1", 0.1, "WEB"), machine("db2", 0.1)}),
               start);
    table.filter("wEb", start + 1s);
    EXPECT_EQ("Web1 db1 ", told(table));
    EXPECT_EQ(2U, table.counts().machines);
    EXPECT_EQ(3U, table.known());
    EXPECT_FALSE(table.rowOf(0, "db2:9100"));
    table.filter("fra1", start + 1s);
    EXPECT_EQ("Web1 db1 ", told(table));
    table.filter("nobody", start + 1s);
    EXPECT_TRUE(table.rows().empty() && table.groups().empty() && !table.worst());
    table.filter("", start + 2s);
    EXPECT_EQ("Web1 db1 db2 ", told(table));
}

TEST(FleetTable, ColoursByTheFigureThatIsSortedBy) {
    FleetTable table;
    FleetMachine a = machine("a", 0.1);
    a.figures = {0.9, 0.2, std::nullopt, 900.0, 12e6};
    FleetMachine b = machine("b", 0.1);
    b.figures = {0.1, NAN, 0.7, 3000.0, 20.0};
    FleetMachine c = machine("c", 0.1);
    c.figures = {0.5, 0.6, 0.1, 99e6, 0.0};
    table.take(snapshotOf({a, b, c}), start);
    table.orderBy(FleetOrder::processor, start);
    EXPECT_EQ("b a– c ", told(table)) << "what was not told is no 0";
    EXPECT_EQ(3U, table.counts().answering());
    EXPECT_EQ(FleetFigure::processor, table.worst()->figure);
    table.orderBy(FleetOrder::storage, start);
    EXPECT_EQ("a b– c ", told(table));
    EXPECT_EQ("c", table.worst()->machine->name);
    EXPECT_EQ(Band::yellow, table.worst()->band);
    table.orderBy(FleetOrder::network, start);
    EXPECT_EQ("a c b ", told(table)) << "by tens: 12 and 99 MB/s are alike";
    EXPECT_EQ(3U, table.counts().of(Band::neutral));
    EXPECT_EQ(FleetFigure::sent, table.rows().front().figure);
    EXPECT_EQ("a", table.worst()->machine->name) << "a rate has no level: the worst is that of the shares";
    a.figures.at(4) = 30.0;
    b.figures.at(3) = 30e3;
    table.take(snapshotOf({a, b}), start);
    table.orderBy(FleetOrder::network, start);
    EXPECT_EQ("b a ", told(table)) << "thousands of bytes are more than hundreds";
}

TEST(FleetBands, AreThoseOfTheRings) {
    EXPECT_EQ(Band::green, shareBand(0.509));
    EXPECT_EQ(Band::yellow, shareBand(0.51));
    EXPECT_EQ(Band::orange, shareBand(0.839));
    EXPECT_EQ(Band::red, shareBand(0.84));
    EXPECT_NE(bandColor(Band::yellow, false), bandColor(Band::yellow, true));
}

TEST(SimulatedFleet, TellsTheSameAndDrifts) {
    using platform::SimulatedFleet;
    SimulatedFleet one(400);
    SimulatedFleet other(400);
    int changes = 0;
    one.setHandler([&changes] { changes++; });
    one.start();
    other.start();
    const auto first = one.snapshot();
    ASSERT_EQ(400U, first->machines.size());
    EXPECT_TRUE(std::ranges::is_sorted(first->machines, {}, &FleetMachine::key));
    EXPECT_TRUE(std::ranges::equal(first->machines, other.snapshot()->machines, {}, &FleetMachine::figures,
                                   &FleetMachine::figures));
    platform::RunLoop& loop = platform::RunLoop::main();
    loop.turn(loop.now() + SimulatedFleet::interval);
    one.pause();
    loop.turn(loop.now() + 3 * SimulatedFleet::interval);
    EXPECT_EQ(2, changes) << "a pause asks nothing";
    EXPECT_NE(first->machines.front().figures, one.snapshot()->machines.front().figures);
    FleetTable table;
    table.take(first, first->sources.front().answered.value());
    for (const Band band : {Band::down, Band::red, Band::orange, Band::stale, Band::unknown}) {
        EXPECT_GT(table.counts().of(band), 0U) << bandName(band);
    }
    EXPECT_GT(table.counts().of(Band::green) + table.counts().of(Band::yellow), 340U);
}

} // namespace
