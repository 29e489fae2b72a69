// SPDX-License-Identifier: MIT
#include "LoopbackServer.hpp"
#include "platform/remote/fetch/Fetcher.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <numeric>
#include <thread>
#include <vector>

namespace vantor::tests {
namespace {

using namespace platform::remote;
using namespace std::chrono_literals;

class Fetch : public testing::Test {
protected:
    void SetUp() override {
        std::string problem;
        fetcher = openFetcher(problem);
        if (fetcher == nullptr) {
            GTEST_SKIP() << problem;
        }
    }
    FetchAnswer ask(FetchRequest request) {
        std::promise<FetchAnswer> promise;
        fetcher->fetch(std::move(request),
                       [&promise](FetchAnswer answer) { promise.set_value(std::move(answer)); });
        return promise.get_future().get();
    }
    FetchAnswer ask(const LoopbackServer& server, const std::string& path = "/metrics") {
        return ask({.url = server.url(path), .mostBytes = 1 << 20});
    }
    /// What is told of a server that always gives this.
    std::string told(const std::string& bytes, std::size_t repeat = 0) {
        const LoopbackServer server([&](const std::string&) {
            return LoopbackServer::Answer{bytes, repeat};
        });
        const FetchAnswer answer = ask(server);
        EXPECT_EQ(answer.problem.empty(), answer.status != 0);
        return answer.problem.empty() ? std::to_string(answer.status) + " " + answer.body : answer.problem;
    }

    std::unique_ptr<Fetcher> fetcher;
};

TEST_F(Fetch, GivesTheAnswerAsItIs) {
    std::string head;
    const LoopbackServer server([&head](const std::string& request) {
        head = request;
        return LoopbackServer::Answer{
            httpAnswer("200 OK", "Content-Type: text/plain; version=0.0.4\r\n", "up 1\n")};
    });
    const auto before = std::chrono::steady_clock::now().time_since_epoch();
    const FetchAnswer answer = ask({.url = server.url("/metrics"), .accept = "text/plain"});
    EXPECT_EQ(answer.problem, "");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.contentType, "text/plain; version=0.0.4");
    EXPECT_EQ(answer.body, "up 1\n");
    EXPECT_GE(answer.taken, before);
    EXPECT_NE(head.find("Accept: text/plain\r\n"), std::string::npos);
    EXPECT_NE(head.find("Accept-Encoding: gzip\r\n"), std::string::npos);
}

TEST_F(Fetch, AccessGoesWithTheQuestion) {
    std::string head;
    const LoopbackServer server([&head](const std::string& request) {
        head = request;
        return LoopbackServer::Answer{httpAnswer("200 OK", "", "")};
    });
    Access access{.user = "me", .password = "secret", .headers = {"X-Scope-OrgID: ops"}};
    (void)ask({.url = server.url("/"), .accept = "text/plain", .access = std::make_shared<Access>(access)});
    EXPECT_NE(head.find("Authorization: Basic bWU6c2VjcmV0\r\n"), std::string::npos);
    EXPECT_NE(head.find("X-Scope-OrgID: ops\r\n"), std::string::npos);
    EXPECT_NE(head.find("Accept: text/plain\r\n"), std::string::npos);
    (void)ask({.url = server.url("/"), .access = std::make_shared<Access>(Access{.password = "secret"})});
    EXPECT_NE(head.find("Authorization: Basic OnNlY3JldA==\r\n"), std::string::npos) << "no name is one too";
    (void)ask({.url = server.url("/"), .access = std::make_shared<Access>(Access{.bearer = "token"})});
    EXPECT_NE(head.find("Authorization: Bearer token\r\n"), std::string::npos);
    (void)ask({.url = server.url("/")});
    EXPECT_EQ(head.find("Authorization"), std::string::npos) << "a connection is kept, a name is not";
}

TEST_F(Fetch, StatesOtherThanSuccessAreTheAskersToJudge) {
    for (const char* const status : {"401 Unauthorized", "404 Not Found", "503 Service Unavailable"}) {
        EXPECT_EQ(told(httpAnswer(status, "", "x")), std::string(status).substr(0, 3) + " x");
    }
}

TEST_F(Fetch, AnswersThatEndEarlyOrLieAreNamed) {
    EXPECT_EQ(told(httpAnswer("200 OK", "Content-Length: 100\r\n", "up 1\n")), "the answer ended early");
    EXPECT_EQ(told("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nup 1\n"),
              "the answer ended early");
    EXPECT_EQ(told(""), "the answer ended early");
    EXPECT_EQ(told(httpAnswer("200 OK", "Content-Length: 4\r\n", "up 1\n")), "200 up 1");
    EXPECT_EQ(told(httpAnswer("200 OK", "Content-Encoding: gzip\r\n", "no gzip")),
              "the answer cannot be unpacked");
}

TEST_F(Fetch, NothingIsTakenPastTheBound) {
    const std::string much(65536, 'x');
    EXPECT_EQ(told(httpAnswer("200 OK", "", much), much.size()), "the answer is too large")
        << "without an end";
    EXPECT_EQ(told("HTTP/1.1 200 OK\r\nX: y\r\n", 6), "the answer is too large") << "headers without an end";
    // A gzip that goes on for ever: a block of 83 bytes that unpacks to 64 KiB of zeros, again and again.
    std::string bomb("\xec\xc1\x01\x01\0\0\0\x80\x90\xfe\xaf\xee\x08\x0a", 14);
    bomb += std::string(63, '\0') + std::string("\x6a\0\0\0\xff\xff", 6);
    const std::string head("\x1f\x8b\x08\0\0\0\0\0\x02\x03", 10);
    EXPECT_EQ(told(httpAnswer("200 OK", "Content-Encoding: gzip\r\n", head + bomb), bomb.size()),
              "the answer is too large");
}

TEST_F(Fetch, AServerThatDripsIsGivenUp) {
    const LoopbackServer server([](const std::string&) {
        return LoopbackServer::Answer{httpAnswer("200 OK", "", ""), 0, true};
    });
    const FetchAnswer answer = ask({.url = server.url("/"), .patience = 200ms});
    EXPECT_EQ(answer.problem, "no whole answer in time");
    EXPECT_EQ(answer.body, "");
}

TEST_F(Fetch, NobodyThere) {
    int port = 0;
    {
        const LoopbackServer server([](const std::string&) { return LoopbackServer::Answer{}; });
        port = server.port();
    }
    const FetchAnswer refused = ask({.url = "http://127.0.0.1:" + std::to_string(port)});
    EXPECT_EQ(refused.problem, "connection refused");
    EXPECT_EQ(ask({.url = "http://name.invalid/"}).problem, "the name cannot be resolved");
    EXPECT_NE(ask({.url = "file:///etc/hostname"}).problem, "");
}

TEST_F(Fetch, RedirectsStayOnTheirOrigin) {
    const LoopbackServer elsewhere(
        [](const std::string&) { return LoopbackServer::Answer{httpAnswer("200 OK", "", "no")}; });
    const LoopbackServer server([&elsewhere](const std::string& request) {
        const auto to = [](const std::string& place) {
            return LoopbackServer::Answer{httpAnswer("302 Found", "Location: " + place + "\r\n", "login")};
        };
        if (request.starts_with("GET /away")) {
            return to(elsewhere.url("/"));
        }
        if (request.starts_with("GET /round")) {
            return to("/round");
        }
        return request.starts_with("GET /near") ? to("/metrics")
                                                : LoopbackServer::Answer{httpAnswer("200 OK", "", "yes")};
    });
    EXPECT_EQ(ask(server, "/near").body, "yes");
    EXPECT_EQ(ask(server, "/away").problem, "it points to another address, which is not followed");
    EXPECT_EQ(ask(server, "/round").problem, "it points from one page to the next");
    EXPECT_EQ(elsewhere.requests(), 0);
    EXPECT_LT(server.requests(), 10);
}

TEST_F(Fetch, SilentServersKeepNobodyElseWaiting) {
    std::vector<std::unique_ptr<LoopbackServer>> silent; // two connections each
    for (int i = 0; i < 20; ++i) {
        silent.push_back(std::make_unique<LoopbackServer>([](const std::string&) {
            return LoopbackServer::Answer{httpAnswer("200 OK", "", ""), 0, true};
        }));
    }
    const LoopbackServer good(
        [](const std::string&) { return LoopbackServer::Answer{httpAnswer("200 OK", "", "up 1\n")}; });
    std::atomic<int> ended = 0;
    const auto askSilent = [&](std::chrono::milliseconds patience, bool isDoubtful) {
        for (std::size_t i = 0; i < 2 * silent.size(); ++i) {
            fetcher->fetch({.url = silent[i / 2]->url("/"), .patience = patience, .isDoubtful = isDoubtful},
                           [&ended](const FetchAnswer&) { ++ended; });
        }
    };
    askSilent(600ms, false);
    EXPECT_EQ(ask({.url = good.url("/"), .patience = 400ms}).body, "up 1\n") << "waiting is not its fault";
    while (ended < 2 * static_cast<int>(silent.size())) {
        std::this_thread::yield();
    }
    const auto asked = [&silent] {
        return std::transform_reduce(silent.begin(), silent.end(), 0, std::plus(),
                                     [](const auto& server) { return server->requests(); });
    };
    const int before = asked();
    askSilent(3s, true);           // they were silent before: others go first
    while (asked() < before + 8) { // each answers one connection, and holds another up
        std::this_thread::yield();
    }
    EXPECT_EQ(ask(good).body, "up 1\n");
    EXPECT_EQ(ended, 2 * static_cast<int>(silent.size())) << "it has waited for one of them";
    fetcher.reset();
}

/// Of which nobody knows yet that they are, and from which no whole line comes.
TEST_F(Fetch, ServersThatAreSilentAtTheStartGiveUpTheirPlaces) {
    std::vector<std::unique_ptr<LoopbackServer>> silent;
    std::atomic<int> ended = 0;
    for (int i = 0; i < 50; ++i) {
        silent.push_back(std::make_unique<LoopbackServer>([](const std::string&) {
            return LoopbackServer::Answer{"HTTP/1.1 200 ", 0, true};
        }));
        fetcher->fetch({.url = silent.back()->url("/")}, [&ended](const FetchAnswer&) { ++ended; });
    }
    const LoopbackServer good(
        [](const std::string&) { return LoopbackServer::Answer{httpAnswer("200 OK", "", "up 1\n")}; });
    EXPECT_EQ(ask(good).body, "up 1\n");
    EXPECT_EQ(ended, 0) << "it has waited for one of them";
    fetcher.reset();
}

TEST_F(Fetch, WhoGoesWithQuestionsUnderWayDropsThem) {
    const LoopbackServer server([](const std::string&) {
        return LoopbackServer::Answer{httpAnswer("200 OK", "", ""), 0, true};
    });
    bool answered = false;
    fetcher->fetch({.url = server.url("/")}, [&answered](const FetchAnswer&) { answered = true; });
    fetcher.reset();
    EXPECT_FALSE(answered);
}

/// Of a server that is busy with the first, the second would have lost its patience.
TEST_F(Fetch, QuestionsThatTakeTurnsGoToAServerOneAtATime) {
    const LoopbackServer server([](const std::string& request) {
        return LoopbackServer::Answer{.bytes = httpAnswer("200 OK", "", "up 1\n"),
                                      .dripsForEver = request.starts_with("GET /first")};
    });
    const auto request = [&server](const char* path, std::chrono::milliseconds patience) {
        return FetchRequest{.url = server.url(path), .takesTurns = true, .patience = patience};
    };
    std::promise<std::string> first;
    fetcher->fetch(request("/first", 1500ms),
                   [&first](const FetchAnswer& answer) { first.set_value(answer.problem); });
    EXPECT_EQ(ask(request("/second", 1400ms)).body, "up 1\n");
    EXPECT_EQ(first.get_future().get(), "no whole answer in time");
    EXPECT_EQ(server.requests(), 2);
}

} // namespace
} // namespace vantor::tests
