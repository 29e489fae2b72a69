// SPDX-License-Identifier: MIT
#include "fleet/FleetWords.hpp"

#include "platform/simulated/SimulatedViewer.hpp"

#include <gtest/gtest.h>

namespace {

using namespace vantor::fleet;
using namespace std::chrono_literals;
using vantor::platform::FleetFigure;
using vantor::platform::FleetMachine;

FleetMachine machine(const char* name, double memory) {
    FleetMachine made;
    made.key = name;
    made.name = name;
    made.figures.at(0) = memory;
    made.taken = 100s;
    return made;
}

class FleetWords : public ::testing::Test {
    vantor::platform::SimulatedViewer m_viewer;
    vantor::platform::Current<vantor::platform::Viewer> m_current{m_viewer};
};

TEST_F(FleetWords, TellCountsAndTheWorst) {
    auto snapshot = std::make_shared<vantor::platform::FleetSnapshot>();
    snapshot->sources = {{"home", 5s, 15s, 100s, {}, false}, {"prod", 15s, 60s, 91s, {}, false}};
    for (int i = 1000; i < 2200; i++) {
        snapshot->machines.push_back(machine(("m" + std::to_string(i)).c_str(), 0.2));
    }
    FleetTable table;
    table.take(snapshot, 100s);
    EXPECT_EQ("1,200 of 1,200 \u00B7 worst m1000 RAM 20%", headerText(table));
    EXPECT_EQ("1,200 \u00B7 worst m1000 RAM 20%", groupText(table.groups().front()));
    EXPECT_EQ("15 s average \u00B7 9 s old", averageText(*snapshot, 100s));

    auto other = std::make_shared<vantor::platform::FleetSnapshot>();
    other->sources = {{"home", 5s, 15s, 100s, "connection refused", true}};
    other->machines = {machine("a", 0.97), machine("b", 0.7), machine("c", 0.5), machine("d", 0.5)};
    other->machines.at(2).downSince = std::chrono::system_clock::now();
    other->machines.at(3).taken = 0s;
    table.take(other, 300s);
    EXPECT_EQ("3 of 4 \u00B7 1 down \u00B7 3 stale", headerText(table));
    table.take(other, 110s);
    EXPECT_EQ("3 of 4 \u00B7 1 down \u00B7 1 red \u00B7 1 orange \u00B7 1 stale \u00B7 worst a RAM 97%",
              headerText(table));
    EXPECT_EQ("3 of 4 \u00B7 worst a RAM 97%", groupText(table.groups().front()));
    EXPECT_EQ("", averageText(*other, 110s));
    EXPECT_EQ(std::vector<std::string>{"home: connection refused"}, sourceProblems(*other));
    const FleetRow& stale = table.rows()[*table.rowOf(0, "d")];
    EXPECT_EQ("110 s old", noteText(stale));
    EXPECT_TRUE(noteText(table.rows()[*table.rowOf(0, "c")]).starts_with("down since "));
    EXPECT_EQ("", noteText(table.rows()[*table.rowOf(0, "a")]));
    EXPECT_EQ("4 min old", averageText(0s, 240s)) << "no average is known";
    EXPECT_EQ("", downText(std::nullopt, "connection refused"));
    EXPECT_TRUE(downText(std::chrono::system_clock::now(), "refused").ends_with(": refused"));
}

TEST_F(FleetWords, TellFiguresAndAges) {
    EXPECT_EQ("\u2013", figureText(FleetFigure::memory, std::nullopt));
    EXPECT_EQ("1.2 MB/s", figureText(FleetFigure::sent, 1.2e6));
    EXPECT_EQ("0 KB/s", figureText(FleetFigure::received, 0.3)) << "not Zero KB";
    EXPECT_EQ("4 min old", ageText(299s));
    EXPECT_EQ("3 h old", ageText(3h));
}

} // namespace
