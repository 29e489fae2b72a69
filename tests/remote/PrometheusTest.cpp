// SPDX-License-Identifier: MIT
#include "HandTurnedQueue.hpp"
#include "ScriptedFetcher.hpp"
#include "platform/remote/sources/PrometheusSource.hpp"
#include "platform/time/RunLoop.hpp"

#include <gtest/gtest.h>

#include <map>

namespace vantor::tests {
namespace {

using namespace platform;
using namespace platform::remote;
using namespace std::chrono_literals;

/// A row of a vector: `labels` is the inside of a JSON object.
std::string row(const std::string& labels, const std::string& value) {
    return R"({"metric":{)" + labels + R"(},"value":[1795408640.25,")" + value + R"("]},)";
}

std::string machine(const std::string& instance, const std::string& more = "") {
    return R"("job":"node","instance":")" + instance + '"' + more;
}

/// A server in the test's hands, and a loop that the test turns.
class Prometheus : public testing::Test {
protected:
    void turn() { clock.turn(); }

    /// Which of the questions is waiting, by what only it has in it.
    [[nodiscard]] std::string waiting() const {
        const std::map<std::string, std::string> signs{{"up", "last_over_time"},
                                                       {"names", "nodename"},
                                                       {"ambiguous", "query=count"},
                                                       {"spacing", "query=up%7Bjob%3D"},
                                                       {"age", "timestamp"},
                                                       {"memory", "MemAvailable"},
                                                       {"storage", "filesystem_avail"},
                                                       {"processor", "cpu_seconds"},
                                                       {"received", "network_receive"},
                                                       {"sent", "network_transmit"},
                                                       {"time", "query=time%28%29&"},
                                                       {"machine", "query=%7B__name__"}};
        for (const auto& [name, sign] : signs) {
            if (fetcher.forms.back().find(sign) != std::string::npos) {
                return name;
            }
        }
        return fetcher.forms.back();
    }
    void reply(const std::string& body, int status = 200, const char* type = "application/json") {
        FetchAnswer answer;
        answer.status = status;
        answer.contentType = type;
        answer.body = body;
        fetcher.answer(std::move(answer));
        turn();
    }
    void replyRows(const std::string& series, const std::string& behind = "") {
        reply(R"({"status":"success","data":{"resultType":"vector","result":[)" +
              series.substr(0, series.empty() ? 0 : series.size() - 1) + "]}" + behind + "}");
    }
    /// Answers all questions of a refresh.
    void refresh() {
        while (fetcher.isAsked()) {
            EXPECT_EQ(fetcher.waiting(), 1u) << "one question at a time";
            replyRows(rows[waiting()], more);
        }
    }
    /// Goes on to the next question; how long that takes, in seconds.
    double untilAsked() {
        const Instant begin = clock.now();
        while (!fetcher.isAsked()) {
            clock.passTo(RunLoop::main().nextDeadline().value());
            turn();
        }
        return std::chrono::duration<double>(clock.now() - begin).count();
    }
    [[nodiscard]] const FleetOrigin& origin() const { return source.snapshot()->sources.at(0); }
    [[nodiscard]] const FleetMachine& at(std::size_t place) const {
        return source.snapshot()->machines.at(place);
    }
    [[nodiscard]] std::optional<double> figure(std::size_t place, FleetFigure which) const {
        return at(place).figure(which);
    }
    [[nodiscard]] double age(std::size_t place) const {
        return std::chrono::duration<double>(clock.now().time_since_epoch() - at(place).taken.value())
            .count();
    }

    HandTurnedClock clock;
    ScriptedFetcher fetcher;
    PrometheusOptions options{.name = "prod", .url = "http://prom:9090"};
    PrometheusSource source{options, fetcher};
    std::string more; ///< behind the data
    std::map<std::string, std::string> rows{
        {"up", row(machine("web:9100", R"(,"dc":"a\u001b","__name__":"up")"), "1") +
                   row(machine("db:9100", R"(,"dc":"b")"), "1")},
        {"names", row(machine("db:9100", R"(,"nodename":"db07")"), "1")},
        {"spacing", R"({"metric":{},"values":[[1000,"1"],[1015,"1"],[1030,"1"],[1060,"1"]]},)"},
        {"age", row(machine("db:9100"), "4") + row(machine("web:9100"), "9")},
        {"memory", row(machine("db:9100"), "0.5") + row(machine("web:9100"), "NaN")},
        {"storage", row(machine("db:9100", R"(,"mountpoint":"/srv")"), "0.95")},
        {"processor", row(machine("db:9100"), "-1e-9") + row(machine("web:9100"), "0.25")},
        {"received", row(machine("web:9100"), "1e3") + row(machine("db:9100"), "+Inf")},
        {"sent", row(machine("web:9100"), "7") + row(machine("gone:9100"), "7")}};
};

TEST_F(Prometheus, AnswersOfOneMomentBecomeMachines) {
    EXPECT_FALSE(source.isSettled());
    source.start();
    EXPECT_EQ(fetcher.forms.front().find("time="), std::string::npos) << "the server says what time it is";
    refresh();
    EXPECT_EQ(fetcher.forms.size(), 10u);
    for (std::size_t i = 1; i < fetcher.forms.size(); ++i) {
        EXPECT_NE(fetcher.forms[i].find("&timeout=8s&time=1795408640.250"), std::string::npos);
    }
    EXPECT_EQ(fetcher.urls.back(), "http://prom:9090/api/v1/query");
    EXPECT_TRUE(source.isSettled());
    EXPECT_EQ(origin().interval, 15s);
    EXPECT_EQ(origin().problem, "");
    ASSERT_EQ(source.snapshot()->machines.size(), 2u);
    EXPECT_EQ(at(0).name, "db07");
    EXPECT_EQ(at(1).name, "web") << "it does not say what it calls itself";
    EXPECT_EQ(at(1).labels->front(), std::pair(std::string("dc"), std::string("a\uFFFD")));
    EXPECT_EQ(at(1).labels->size(), 3u);
    EXPECT_EQ(at(0).volume, "/srv");
    EXPECT_EQ(figure(0, FleetFigure::storage), 0.95);
    EXPECT_EQ(figure(0, FleetFigure::processor), 0.0);
    EXPECT_EQ(figure(0, FleetFigure::received), std::nullopt) << "infinite";
    EXPECT_EQ(figure(1, FleetFigure::memory), std::nullopt) << "not a number";
    EXPECT_EQ(figure(1, FleetFigure::storage), std::nullopt) << "not told is not 0";
    EXPECT_EQ(figure(1, FleetFigure::sent), 7.0);
    EXPECT_NEAR(age(0), 4, 1e-6);
    EXPECT_NEAR(untilAsked(), 15, 0.1);
    refresh();
    EXPECT_EQ(fetcher.forms.size(), 17u) << "what rarely changes is not asked each time";
}

TEST_F(Prometheus, RatesDoNotOutliveTheirMachine) {
    source.start();
    refresh();
    untilAsked();
    rows["up"] = row(machine("web:9100", R"(,"dc":"a")"), "0") + row(machine("db:9100"), "1");
    rows["age"] = row(machine("web:9100"), "1"); // whatever lingers
    rows["processor"] = row(machine("db:9100"), "0.75") + row(machine("web:9100"), "0.99");
    rows["storage"] = "";
    refresh();
    EXPECT_EQ(figure(1, FleetFigure::processor), 0.25) << "the last figure";
    EXPECT_TRUE(at(1).downSince && !at(1).problem.empty());
    EXPECT_NEAR(age(1), 24, 0.1);
    EXPECT_EQ(figure(0, FleetFigure::processor), std::nullopt) << "no reading of its own says how old it is";
    EXPECT_EQ(figure(0, FleetFigure::memory), 0.5);
    EXPECT_EQ(at(0).volume, "");
    untilAsked();
    rows["up"] = row(machine("web:9100"), "1");
    refresh();
    ASSERT_EQ(source.snapshot()->machines.size(), 1u) << "the server knows the other no more";
    EXPECT_FALSE(at(0).downSince);
    EXPECT_EQ(at(0).problem, "");
    EXPECT_EQ(figure(0, FleetFigure::processor), 0.99);
}

TEST_F(Prometheus, WhatIsDoubtfulIsTold) {
    rows["memory"] += row(machine("db:9100"), "0.9");
    rows["ambiguous"] = row(machine("db:9100"), "2");
    rows["sent"] = row(R"("host":"db")", "1");
    source.start();
    refresh();
    EXPECT_EQ(figure(0, FleetFigure::memory), 0.5) << "the first counts";
    for (const char* const told :
         {"memory: 1 answer more", "sent: its answers have not the labels", "1 machine is several in one"}) {
        EXPECT_NE(origin().problem.find(told), std::string::npos) << origin().problem;
    }
    EXPECT_FALSE(origin().isSilent);

    untilAsked();
    rows["up"] = row(machine("web:9100"), "1");
    more = R"(,"warnings":["a store is down"])";
    refresh();
    EXPECT_EQ(source.snapshot()->machines.size(), 2u) << "what is missing may be in the store";
    EXPECT_TRUE(origin().problem.starts_with("it warns that a part")) << origin().problem;

    untilAsked();
    more = "";
    rows["up"] += row(R"("job":"other","instance":"web:9100")", "1");
    while (fetcher.isAsked()) {
        if (waiting() == "storage") {
            reply(R"({"status":"error","errorType":"execution","error":"too many samples"})", 422);
        } else {
            replyRows(rows[waiting()]);
        }
    }
    EXPECT_NE(origin().problem.find("storage: execution: too many samples"), std::string::npos);
    EXPECT_NE(origin().problem.find("several jobs"), std::string::npos);
    EXPECT_EQ(at(0).name, "node web:9100") << "two of the same address";
}

TEST_F(Prometheus, OfASilentServerTheLastFiguresStay) {
    source.start();
    refresh();
    const auto told = [this](const std::string& body, int status, const char* type, bool isLate) {
        untilAsked();
        while (isLate && waiting() != "storage") {
            replyRows(rows[waiting()]);
        }
        reply(body, status, type);
        if (isLate) { // one question in vain may be that question's fault
            EXPECT_EQ(waiting(), "processor");
            reply(body, status, type);
        }
        EXPECT_FALSE(fetcher.isAsked());
        EXPECT_TRUE(origin().isSilent);
        EXPECT_EQ(source.snapshot()->machines.size(), 2u);
        EXPECT_EQ(figure(0, FleetFigure::memory), 0.5);
        return origin().problem;
    };
    rows["memory"] = row(machine("db:9100"), "0.1");
    const auto hasWords = [](const std::string& text, const char* words) {
        EXPECT_NE(text.find(words), std::string::npos) << text;
    };
    hasWords(told("Unauthorized", 401, "text/plain", false), "a password");
    hasWords(told("<html>", 200, "text/html; charset=utf-8", false), "a login");
    hasWords(told("<html>", 503, "text/html", true), "status 503");
    hasWords(told(R"({"status":"error","errorType":"timeout","error":"query timed out"})", 503,
                  "application/json", true),
             "timeout: query timed out");
    hasWords(
        told(R"({"status":"success","data":{"result":[)" + rows["storage"], 200, "application/json", true),
        "ends early");
    hasWords(told(R"({"status":"success","data":{"resultType":"vector","result":[]}})", 200,
                  "application/json", false),
             "knows no machine");
    EXPECT_NEAR(untilAsked(), 32, 7) << "asked less and less";
    fetcher.fail("connection refused");
    turn();
    EXPECT_EQ(origin().problem, "connection refused");
    EXPECT_NEAR(untilAsked(), 60, 13);
    refresh();
    EXPECT_FALSE(origin().isSilent);
    EXPECT_EQ(origin().problem, "");
    EXPECT_EQ(figure(0, FleetFigure::memory), 0.1);
    rows["up"] = row(R"("host":"db")", "1");
    untilAsked();
    replyRows(rows["up"]);
    hasWords(origin().problem, "not the labels that tell them apart");
    EXPECT_TRUE(origin().isSilent);
}

TEST_F(Prometheus, OneQuestionInVainCostsItsFigureAlone) {
    source.start();
    refresh();
    untilAsked();
    rows["memory"] = row(machine("db:9100"), "0.1");
    while (fetcher.isAsked()) {
        if (waiting() == "storage" || waiting() == "sent") {
            fetcher.fail("it does not answer within 8 s");
            turn();
        } else {
            replyRows(rows[waiting()]);
        }
    }
    EXPECT_FALSE(origin().isSilent);
    EXPECT_EQ(origin().problem,
              "storage: it does not answer within 8 s; sent: it does not answer within 8 s");
    EXPECT_EQ(figure(0, FleetFigure::memory), 0.1);
    EXPECT_EQ(figure(0, FleetFigure::processor), 0);
    EXPECT_FALSE(figure(0, FleetFigure::storage)) << "not the one of before";
    untilAsked();
    refresh();
    EXPECT_EQ(origin().problem, "");
    EXPECT_EQ(figure(0, FleetFigure::storage), 0.95);
}

TEST_F(Prometheus, AsksAsOftenAsTheServerCanBear) {
    for (std::size_t i = 0; i < 1001; ++i) {
        rows["up"] += row(machine("n" + std::to_string(i)), "1");
    }
    rows["age"] = row(machine("web:9100"), "34") + row(machine("db:9100"), "38");
    source.start();
    refresh();
    EXPECT_EQ(origin().staleAfter, 3 * 60s + 34s) << "an engine that hides half a minute";
    EXPECT_NEAR(untilAsked(), 60, 0.1);
    source.pause();
    replyRows(rows["up"]);
    EXPECT_FALSE(fetcher.isAsked()) << "nobody looks";
    source.start();
    EXPECT_EQ(waiting(), "up");
    refresh();
    source.pause();
    clock.pass(20);
    turn();
    source.start();
    EXPECT_NEAR(untilAsked(), 40, 0.1) << "looking again is no reason to ask again";
    clock.pass(50); // a server that takes its time
    refresh();
    EXPECT_NEAR(untilAsked(), 50, 0.1);
}

TEST_F(Prometheus, OneMachineIsFollowedByItsOwnMoments) {
    source.start();
    refresh();
    EXPECT_EQ(source.watchOf("nobody"), nullptr);
    const std::unique_ptr<MachineWatch> watch = source.watchOf(at(0).key);
    watch->start();
    const auto tell = [&](const std::string& up) {
        reply(R"({"status":"success","data":{"resultType":"scalar","result":[160,"160"]}})");
        EXPECT_NE(fetcher.forms.back().find("job%3D%22node%22%2Cinstance%3D%22db%3A9100%22"),
                  std::string::npos);
        const auto metric = [](const char* name, const std::string& values) {
            return R"({"metric":{"__name__":")" + std::string(name) +
                   R"(","cpu":"0","mode":"user"},"values":)" + values + "},";
        };
        replyRows(metric("node_memory_MemTotal_bytes", R"([[130,"100"],[145,"100"]])") +
                  metric("node_memory_MemAvailable_bytes", R"([[130,"10"],[145,"40"]])") +
                  metric("node_cpu_seconds_total", R"([[130,"1"],[145,"7"]])") + metric("up", up));
    };
    tell(R"([[145,"1"]])");
    ASSERT_TRUE(watch->state().figures);
    EXPECT_EQ(watch->state().figures->memory->free, 40u);
    EXPECT_EQ(watch->state().figures->processor->user, 600u);
    EXPECT_EQ(watch->state().figures->interval, 15s);
    EXPECT_EQ(clock.now().time_since_epoch() - watch->state().taken, 15s);
    source.pause();
    EXPECT_NEAR(untilAsked(), 15, 0.1);
    tell(R"([[145,"0"],[160,"0"]])");
    EXPECT_FALSE(watch->state().problem.empty());
    const auto since = std::chrono::system_clock::now() - watch->state().downSince.value();
    EXPECT_NEAR(std::chrono::duration<double>(since).count(), 15, 2);
    EXPECT_TRUE(watch->state().figures) << "the last ones";
}

} // namespace
} // namespace vantor::tests
