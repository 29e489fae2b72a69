// SPDX-License-Identifier: MIT
#include "hosts/qt/SingleInstance.hpp"

#include "Eventually.hpp"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <optional>
#include <thread>
#include <vector>

namespace vantor::hosts::qt {
namespace {

using Role = SingleInstance::Role;
using Words = SingleInstance::Words;
using std::chrono::milliseconds;

class Starts : public ::testing::Test {
protected:
    Starts() { // a meeting point that nobody else has
        qputenv("DISPLAY", ":test-" + QByteArray::number(QCoreApplication::applicationPid()));
        qunsetenv("XDG_ACTIVATION_TOKEN");
        makeRoomForToken();
    }

    void listen() {
        m_first.emplace("widget");
        m_first->setCallHandler([this](const Words& words) { m_heard.push_back(words); });
    }
    std::optional<SingleInstance> m_first;
    std::vector<Words> m_heard;
};

TEST_F(Starts, ManyAtOnceAreAllHeardByTheFirst) {
    listen();
    ASSERT_EQ(m_first->role(), Role::first);
    qputenv("XDG_ACTIVATION_TOKEN", "of the launcher");
    constexpr int count = 40;
    std::vector<std::optional<Role>> roles(count);
    std::atomic<int> ended = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            roles[static_cast<std::size_t>(i)] =
                SingleInstance("widget", {"--tray", std::to_string(i)}).role();
            ++ended;
        });
    }
    EXPECT_TRUE(tests::eventually([&] { return ended == count; }));
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::ranges::count(roles, Role::second), count);
    ASSERT_EQ(m_heard.size(), count);
    std::ranges::sort(m_heard);
    EXPECT_EQ(std::ranges::unique(m_heard).size(), 0U);
    EXPECT_EQ(m_heard.front(), (Words{"--tray", "0"}));
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "of the launcher");
}

TEST_F(Starts, OneThatHangsIsToldOf) {
    listen(); // and nobody turns its loop
    const SingleInstance second("widget", {}, milliseconds(50));
    EXPECT_EQ(second.role(), Role::unanswered);
    EXPECT_EQ(second.other(), ::getpid());
    EXPECT_EQ(SingleInstance("another").role(), Role::first);
    qputenv("DISPLAY", ":elsewhere");
    EXPECT_EQ(SingleInstance("widget").role(), Role::first);
}

TEST_F(Starts, OneThatEndsMeanwhileIsFollowed) {
    for (int i = 0; i < 20; ++i) { // it meets the second sooner or later
        listen();
        std::optional<Role> role;
        std::thread second([&role] { role = SingleInstance("widget").role(); });
        for (int turn = 0; turn < i; ++turn) {
            std::this_thread::yield();
        }
        m_first.reset();
        second.join();
        EXPECT_EQ(role, Role::first);
    }
}

TEST_F(Starts, WithoutADescriptorLeftNothingSpins) {
    if (VANTOR_SLOWDOWN > 1) {
        GTEST_SKIP() << "the sanitizer asks for descriptors itself";
    }
    listen();
    EXPECT_EQ(SingleInstance("widget", {}, milliseconds(30)).role(),
              Role::unanswered); // it stands at the door
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const int next = ::dup(0); // would be the number of the next one
    ::close(next);
    const rlimit none{static_cast<rlim_t>(next), before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    int turns = 0;
    QEventLoop loop;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &loop,
                     [&turns] { ++turns; });
    QTimer::singleShot(200, &loop, &QEventLoop::quit);
    loop.exec();
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_LT(turns, 20);
    EXPECT_TRUE(tests::eventually([this] { return !m_heard.empty(); })); // it is taken in later
}

} // namespace
} // namespace vantor::hosts::qt
