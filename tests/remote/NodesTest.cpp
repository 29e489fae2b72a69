// SPDX-License-Identifier: MIT
#include "HandTurnedQueue.hpp"
#include "ScriptedFetcher.hpp"
#include "platform/remote/sources/FleetOf.hpp"
#include "platform/remote/sources/NodesSource.hpp"
#include "platform/time/RunLoop.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vantor::tests {
namespace {

using namespace platform::remote;
using namespace std::chrono_literals;
using platform::FleetFigure;
using platform::FleetMachine;
using platform::FleetSnapshot;
using platform::Instant;
using platform::RunLoop;

/// Made-up exporters, on a loop that the test turns.
class Nodes : public testing::Test {
protected:
    void SetUp() override {
        source.setHandler([this] { ++changes; });
    }
    void TearDown() override { source.pause(); }
    static NodeTarget target(const std::string& name) {
        std::string problem;
        return {*nodeAddress(name, problem)};
    }
    /// Lets time pass, a deadline after the other.
    void pass(std::chrono::milliseconds time) {
        const Instant end = clock.now() + time;
        for (clock.turn(); clock.now() < end; clock.turn()) {
            clock.passTo(std::min(end, RunLoop::main().nextDeadline().value_or(end)));
        }
    }
    std::string scrape(int seconds, const std::string& name = "n") const {
        return "node_memory_MemTotal_bytes 100\nnode_memory_MemAvailable_bytes 40\n"
               "node_filesystem_size_bytes{mountpoint=\"/srv\"} 100\n"
               "node_filesystem_avail_bytes{mountpoint=\"/srv\"} 5\n"
               "node_network_receive_bytes_total{device=\"eth0\"} " +
               std::to_string(seconds * 1000) +
               "\nnode_network_transmit_bytes_total{device=\"eth0\"} 7\n"
               "node_cpu_seconds_total{cpu=\"0\",mode=\"user\"} " +
               std::to_string(seconds) + "\nnode_uname_info{nodename=\"" + name + "\"} 1\n";
    }
    /// Answers all that was asked, as machines that count seconds do.
    void answerAll() {
        while (fetcher.isAsked()) {
            fetcher.answer(
                scrape(static_cast<int>(
                    std::chrono::floor<std::chrono::seconds>(clock.now().time_since_epoch()).count())),
                clock.now().time_since_epoch());
        }
    }
    const FleetMachine& machine(std::size_t index = 0) { return source.snapshot()->machines.at(index); }

    HandTurnedClock clock;
    ScriptedFetcher fetcher;
    NodesSource source{"lab", fetcher};
    int changes = 0;
};

TEST_F(Nodes, EachTellsItsFiguresAndItsLastOnesWhenItFallsSilent) {
    source.watch({target("web01"), target("db01"), target("web01")});
    ASSERT_EQ(source.snapshot()->machines.size(), 2u);
    EXPECT_FALSE(machine().taken);
    source.start();
    pass(100ms);
    answerAll();
    pass(100ms);
    EXPECT_EQ(machine().name, "db01");
    EXPECT_DOUBLE_EQ(*machine().figure(FleetFigure::memory), 0.6);
    EXPECT_FALSE(machine().figure(FleetFigure::received)) << "there is no rate yet, which is not 0";
    EXPECT_FALSE(source.isSettled());
    pass(1s);
    answerAll();
    pass(100ms);
    EXPECT_TRUE(source.isSettled());
    EXPECT_EQ(source.snapshot()->sources.front().staleAfter, 15s);
    EXPECT_DOUBLE_EQ(*machine().figure(FleetFigure::storage), 0.95);
    EXPECT_EQ(machine().volume, "/srv");
    EXPECT_DOUBLE_EQ(*machine().figure(FleetFigure::processor), 1);
    EXPECT_GT(*machine().figure(FleetFigure::received), 0);

    pass(5s);
    fetcher.fail("connection refused");
    answerAll();
    pass(300ms);
    const std::shared_ptr<const FleetSnapshot> snapshot = source.snapshot();
    const auto down = std::ranges::find_if(snapshot->machines,
                                           [](const FleetMachine& one) { return one.downSince.has_value(); });
    ASSERT_NE(down, snapshot->machines.end());
    EXPECT_EQ(down->problem, "connection refused");
    EXPECT_DOUBLE_EQ(*down->figure(FleetFigure::memory), 0.6);
    EXPECT_EQ(std::ranges::count_if(snapshot->machines, [](const auto& one) { return one.problem.empty(); }),
              1);
}

TEST_F(Nodes, AThousandAreSpreadAndToldOfInBursts) {
    std::vector<NodeTarget> targets;
    for (int i = 0; i < 1000; ++i) {
        targets.push_back(target("n" + std::to_string(i)));
    }
    source.watch(targets);
    changes = 0;
    source.start();
    EXPECT_LT(fetcher.urls.size(), 400u);
    for (int i = 0; i < 250; ++i) {
        answerAll();
        pass(20ms);
    }
    EXPECT_EQ(std::set(fetcher.urls.begin(), fetcher.urls.end()).size(), 1000u);
    EXPECT_LE(fetcher.urls.size(), 3000u);
    EXPECT_GT(changes, 2);
    EXPECT_LT(changes, 12) << "a snapshot of a thousand machines costs as much as an answer";
}

TEST_F(Nodes, NobodyIsAskedWhileNobodyLooksAndNoShareCoversThatTime) {
    source.watch({target("web01")});
    source.start();
    for (int i = 0; i < 30; ++i) {
        answerAll();
        pass(100ms);
    }
    source.pause();
    const std::size_t asked = fetcher.urls.size();
    pass(600s);
    EXPECT_EQ(fetcher.urls.size(), asked);
    source.start();
    pass(100ms);
    EXPECT_EQ(fetcher.urls.size(), asked + 1);
    const auto taken = machine().taken;
    answerAll();
    pass(300ms);
    EXPECT_EQ(machine().taken, taken) << "ten minutes' average is no figure of now";
    pass(1s);
    answerAll();
    pass(300ms);
    EXPECT_GT(machine().taken, taken);
}

TEST_F(Nodes, AListThatChangesKeepsWhatIsKnown) {
    source.watch({target("web01"), target("db01")});
    source.start();
    for (int i = 0; i < 20; ++i) {
        answerAll();
        pass(100ms);
    }
    pass(5s);
    ASSERT_TRUE(fetcher.isAsked());
    source.watch({target("web01"), target("nas")});
    answerAll(); // one of them is of a machine that has gone
    pass(300ms);
    ASSERT_EQ(source.snapshot()->machines.size(), 2u);
    EXPECT_EQ(machine(1).name, "web01");
    EXPECT_TRUE(machine(1).figure(FleetFigure::processor));
    source.complain("t.json: is broken", false);
    EXPECT_EQ(source.snapshot()->sources.front().problem, "t.json: is broken");
    EXPECT_TRUE(source.watchOf(machine(1).key)->state().figures) << "it goes on from what is known";
    EXPECT_EQ(source.watchOf("gone"), nullptr);
}

TEST_F(Nodes, ANumberIsCalledByTheMachinesOwnNameWhereThatIsItsAlone) {
    source.watch({target("10.0.0.1"), target("10.0.0.2"), target("localhost:9101"), target("web01")});
    source.start();
    pass(100ms);
    for (const char* const name : {"a", "a", "b", "c"}) {
        ASSERT_TRUE(fetcher.isAsked());
        fetcher.answer(scrape(1, name), clock.now().time_since_epoch());
    }
    pass(300ms);
    std::vector<std::string> names;
    for (const FleetMachine& one : source.snapshot()->machines) {
        names.push_back(one.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"10.0.0.1", "10.0.0.2", "b", "web01"}));
}

TEST_F(Nodes, SeveralSourcesAreOne) {
    NodesSource other("home", fetcher);
    FleetOf both({{&source, "lab"}, {&other, "home"}});
    int told = 0;
    both.setHandler([&told] { ++told; });
    other.watch({target("nas")});
    source.watch({target("web01")});
    pass(300ms);
    EXPECT_GT(told, 0);
    const std::shared_ptr<const FleetSnapshot> snapshot = both.snapshot();
    ASSERT_EQ(snapshot->machines.size(), 2u);
    EXPECT_EQ(snapshot->sources.at(snapshot->machines.at(1).source).name, "home");
    EXPECT_EQ(snapshot->machines.at(1).name, "nas");
    EXPECT_FALSE(both.isSettled());
    both.start();
    pass(100ms);
    EXPECT_EQ(fetcher.urls.size(), 2u);
    both.pause();
}

} // namespace
} // namespace vantor::tests
