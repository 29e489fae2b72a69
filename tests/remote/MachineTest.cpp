// SPDX-License-Identifier: MIT
#include "HandTurnedQueue.hpp"
#include "ScriptedFetcher.hpp"
#include "platform/remote/NodeWatch.hpp"
#include "platform/remote/RemoteMachine.hpp"
#include "platform/time/RunLoop.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

using namespace platform::remote;
using namespace std::chrono_literals;
using platform::Instant;
using platform::RunLoop;
using platform::linux::MemorySplit;
using platform::linux::ProcessorTimes;

NodeFigures someFigures() {
    NodeFigures figures;
    figures.memory = MemorySplit{.total = 8 << 20, .free = 2 << 20, .active = 1 << 20};
    figures.storage =
        NodeVolume{.device = "d", .mountPoint = "/srv", .type = "xfs", .size = 1000, .available = 50};
    figures.processor = ProcessorTimes{.user = 300, .system = 100, .idle = 600};
    figures.network = NodeRates{.received = 6e9, .sent = 0.5};
    figures.traffic = platform::TrafficTotals{7, 8};
    return figures;
}

std::uint64_t received(RemoteMachine& machine) {
    std::uint64_t sum = 0;
    const auto addresses = machine.interfaceAddresses();
    for (const platform::InterfaceAddress& address : *addresses) {
        sum += address.receivedBytes;
    }
    return sum;
}

TEST(RemoteMachine, PlaysTheLastIntervalAgainAtEachQuestion) {
    RemoteMachine machine(someFigures());
    platform::host_cpu_load_info before{}, after{};
    ASSERT_EQ(machine.hostCpuLoad(before), platform::KERN_SUCCESS);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(machine.hostCpuLoad(after), platform::KERN_SUCCESS);
        const std::uint32_t all =
            after.user - before.user + after.system - before.system + after.idle - before.idle;
        ASSERT_GT(all, 0u);
        EXPECT_EQ((after.user - before.user) * 10, all * 3);
        before = after;
    }
    std::uint64_t last = received(machine);
    for (int i = 0; i < 10; ++i) { // past 32 bits each second
        const std::uint64_t now = received(machine);
        EXPECT_EQ(now - last, 6000000000u);
        last = now;
    }
    EXPECT_EQ(machine.networkTotals()->cards, (platform::TrafficTotals{7, 8}));

    platform::vm_statistics64 record{};
    std::uint64_t page = 0;
    ASSERT_EQ(machine.hostVirtualMemory(record), platform::KERN_SUCCESS);
    ASSERT_EQ(machine.hostPageSize(page), platform::KERN_SUCCESS);
    EXPECT_EQ(record.free_count * page, 2u << 20);
    EXPECT_EQ(machine.documentDirectories()->front(), "/srv");
    EXPECT_EQ(machine.volumeCapacities("/srv")->available, 50);
    EXPECT_TRUE(machine.failures().empty());
}

TEST(RemoteMachine, WhatIsMissingKeepsItsLastFiguresAndIsNamed) {
    RemoteMachine machine(someFigures());
    NodeFigures poor;
    poor.memory = MemorySplit{.total = 8 << 20, .free = 1 << 20};
    machine.show(poor);
    EXPECT_EQ(machine.failures().size(), 3u);
    EXPECT_EQ(machine.volumeCapacities("/srv")->total, 1000);
    platform::host_cpu_load_info before{}, after{};
    machine.hostCpuLoad(before);
    machine.hostCpuLoad(after);
    EXPECT_GT(after.idle, before.idle) << "a report would ask again at once, for ever";

    machine.lose("connection refused");
    EXPECT_EQ(machine.failures().size(), 4u);
    EXPECT_EQ(machine.failures().front().reason, "connection refused");
    EXPECT_EQ(machine.physicalMemory(), 8u << 20);
    machine.show(someFigures());
    EXPECT_TRUE(machine.failures().empty());
}

/// A watch of a made-up node, on a loop that the test turns.
class Watch : public testing::Test {
protected:
    /// Lets the answer come in.
    void turn() { clock.turn(); }
    /// Goes on to the next question; how long that takes, in seconds.
    double untilAsked() {
        const Instant begin = clock.now();
        while (!fetcher.isAsked()) {
            clock.passTo(RunLoop::main().nextDeadline().value());
            turn();
        }
        return std::chrono::duration<double>(clock.now() - begin).count();
    }
    static std::string scrape(int userSeconds) {
        return "node_memory_MemTotal_bytes 100\nnode_memory_MemAvailable_bytes 40\n"
               "node_cpu_seconds_total{cpu=\"0\",mode=\"user\"} " +
               std::to_string(userSeconds) + "\n";
    }

    HandTurnedClock clock;
    ScriptedFetcher fetcher;
    std::string problem;
    NodeWatch watch{*nodeAddress("web01", problem), fetcher};
};

TEST_F(Watch, AsksTwiceASecondApartThenAtItsInterval) {
    int changes = 0;
    watch.setHandler([&changes] { ++changes; });
    watch.start();
    EXPECT_TRUE(fetcher.urls.front().starts_with("http://web01:9100/metrics?collect[]=cpu&"));
    fetcher.answer(scrape(1), 10s);
    EXPECT_NEAR(untilAsked(), 1, 0.1);
    EXPECT_FALSE(watch.state().figures);
    fetcher.answer(scrape(2), 11s);
    EXPECT_NEAR(untilAsked(), 5, 0.1);
    ASSERT_TRUE(watch.state().figures);
    EXPECT_EQ(watch.state().figures->interval, 1s);
    EXPECT_EQ(watch.state().figures->processor->user, 100u);
    EXPECT_EQ(changes, 2);
}

TEST_F(Watch, ASilentNodeIsAskedLessAndLess) {
    watch.start();
    double all = 0;
    for (const double wait : {1.0, 2.0, 4.0, 8.0, 16.0, 32.0, 60.0, 60.0}) {
        fetcher.fail("connection refused");
        const double waited = untilAsked();
        EXPECT_NEAR(waited, wait, wait * 0.2 + 0.02);
        all += waited - wait;
    }
    EXPECT_NE(all, 0) << "many nodes would be asked at once";
    EXPECT_EQ(watch.state().problem, "connection refused");
    EXPECT_TRUE(watch.state().downSince);
    fetcher.answer(scrape(1), 10s);
    EXPECT_NEAR(untilAsked(), 1, 0.1);
    EXPECT_EQ(watch.state().problem, "");
    EXPECT_FALSE(watch.state().downSince);
}

TEST_F(Watch, WhatIsNoExporterIsNamed) {
    watch.start();
    const auto told = [this](int status, const char* type, const char* body) {
        FetchAnswer answer;
        answer.status = status;
        answer.contentType = type;
        answer.body = body;
        fetcher.answer(std::move(answer));
        untilAsked();
        return watch.state().problem;
    };
    EXPECT_EQ(told(200, "text/html", "<a>node_memory_MemTotal_bytes 1</a>"),
              "there is no node_exporter at this address");
    EXPECT_EQ(told(200, "", "up 1\n"), "there is no node_exporter at this address");
    EXPECT_EQ(told(401, "text/plain", "Unauthorized"), "it answers with status 401");
    EXPECT_EQ(told(200, "", "node_cpu_seconds_total{cpu=\"0\",mode=\"user\"} 1\n"),
              "its node_exporter tells no memory figures");
    EXPECT_EQ(fetcher.urls.back(), fetcher.urls.front());
    told(400, "text/plain", "Couldn't create filtered metrics handler");
    EXPECT_EQ(fetcher.urls.back(), "http://web01:9100/metrics") << "a collector is off there";
}

TEST_F(Watch, AnAnswerAfterItsEndIsDropped) {
    auto short_lived = std::make_unique<NodeWatch>(*nodeAddress("db01", problem), fetcher);
    short_lived->start();
    short_lived.reset();
    fetcher.answer(scrape(1), 10s);
    turn();
    EXPECT_FALSE(fetcher.isAsked());
}

} // namespace
} // namespace vantor::tests
