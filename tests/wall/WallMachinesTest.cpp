// SPDX-License-Identifier: MIT
#include "../remote/LoopbackServer.hpp"
#include "DemoInPlace.hpp"
#include "Eventually.hpp"
#include "hosts/widget/WallWindow.hpp"
#include "platform/core/MakeForEver.hpp"
#include "platform/time/RunLoop.hpp"
#include "platform/viewer/Viewer.hpp"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <algorithm>
#include <chrono>
#include <map>
#include <memory>

namespace vantor::hosts::widget {

namespace {

using platform::RunLoop;
using tests::eventually;

/// The window of three exporters that a server on loopback plays, each by a path of its own.
class WallOfExporters : public ::testing::Test {
protected:
    static constexpr int machines = 3;

    /// Workers may still ask what was opened.
    void open(double every) {
        tests::putDemoInPlace();
        Options options;
        for (int i = 1; i <= machines; ++i) {
            options.fleet.nodes.push_back(m_server.url("/web0" + std::to_string(i)));
        }
        options.fleet.every = every;
        m_fleet = &platform::makeForEver<common::FleetHost>(options.fleet);
        if (!m_fleet->open("test")) {
            GTEST_SKIP() << "libcurl is not installed";
        }
        window = std::make_unique<WallWindow>(options, *m_fleet);
        window->start();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        ASSERT_TRUE(eventually([&] { return m_fleet->source().isSettled(); }));
        ASSERT_EQ(window->wall().table().worst()->machine->name, "web03");
    }
    void TearDown() override {
        window.reset();
        RunLoop::main().setClock({});
        RunLoop::main().clear();
    }
    [[nodiscard]] int asked() const { return m_server.requests(); }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    bool shows() {
        return eventually([&] { return window->page() != nullptr && window->page()->host() != nullptr; });
    }
    bool isBack() {
        return eventually([&] { return window->page() == nullptr; }) && window->wall().isVisible();
    }
    /// Whether anybody turns the main loop, without which no timer acts and nobody is asked.
    static bool isTurned() {
        const auto isDone = std::make_shared<bool>(false);
        RunLoop::main().post([isDone] { *isDone = true; });
        QApplication::processEvents();
        return *isDone;
    }
    bool tellsOf(const std::string& name) {
        const auto labels = window->page()->host()->card().findChildren<QLabel*>();
        return std::ranges::any_of(labels, [&name](const QLabel* label) {
            return label->text().startsWith(QString::fromStdString(name));
        });
    }

    std::unique_ptr<WallWindow> window;

private:
    std::map<std::string, int> m_seconds;
    tests::LoopbackServer m_server{[this](const std::string& request) {
        const std::string name = request.substr(request.find('/') + 1, 5);
        const std::string seconds = std::to_string(++m_seconds[name]);
        return tests::LoopbackServer::Answer{
            tests::httpAnswer("200 OK", "Content-Type: text/plain; version=0.0.4\r\n",
                              "node_memory_MemTotal_bytes 100e9\nnode_memory_MemAvailable_bytes " +
                                  std::to_string('4' - name.back()) +
                                  "0e9\nnode_filesystem_size_bytes{mountpoint=\"/srv\"} 100e9\n"
                                  "node_filesystem_avail_bytes{mountpoint=\"/srv\"} 90e9\n"
                                  "node_cpu_seconds_total{cpu=\"0\",mode=\"user\"} " +
                                  seconds + "\nnode_cpu_seconds_total{cpu=\"0\",mode=\"idle\"} " + seconds +
                                  "0\nnode_uname_info{nodename=\"" + name + "\"} 1\n")};
    }};
    common::FleetHost* m_fleet = nullptr;
};

/// By key and by pointer, closed at once and after a while; what workers may still ask stays in place.
TEST_F(WallOfExporters, OpensOneAfterTheOther) {
    open(0.2);
    const platform::Viewer* const viewer = &platform::currentViewer();
    wall::WallView& view = window->wall().view();
    for (std::size_t row = 0; row < 2 * machines; ++row) {
        const bool byKey = row % 2 == 0;
        view.setCursor(row % machines);
        const std::string name = window->wall().table().rows().at(row % machines).machine->name;
        if (byKey) {
            press(Qt::Key_Return);
        } else {
            QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, view.cellOf(row % machines).center());
        }
        ASSERT_NE(window->page(), nullptr) << name;
        if (row > 1) {
            ASSERT_TRUE(shows()) << name;
            const int before = asked();
            EXPECT_TRUE(eventually([&] { return asked() > before + 1; })) << "it goes on to be asked";
            EXPECT_TRUE(tellsOf(name)) << name;
        }
        press(Qt::Key_Escape);
        ASSERT_TRUE(isBack()) << name;
        EXPECT_EQ(&platform::currentViewer(), viewer);
        EXPECT_NE(platform::Current<platform::Machine>::get(), nullptr);
    }
    const int before = asked();
    EXPECT_TRUE(eventually([&] { return asked() > before + machines; })) << "the wall is asked again";
}

TEST_F(WallOfExporters, AreNotAskedWhileNobodyLooksAndAtOnceWhenSomebodyDoes) {
    open(3600);
    window->hide();
    EXPECT_TRUE(eventually([] { return !isTurned(); }));
    const int before = asked();
    RunLoop::main().setClock([] { return std::chrono::steady_clock::now() + std::chrono::minutes(90); });
    window->show();
    EXPECT_TRUE(eventually([&] { return asked() >= before + machines; })) << asked() - before;
    RunLoop::main().setClock({});
    EXPECT_TRUE(eventually(isTurned));
    window->showMinimized();
    EXPECT_TRUE(eventually([] { return !isTurned(); }));
    window->showNormal();
    EXPECT_TRUE(eventually(isTurned));
    window->wall().view().openRow(0);
    ASSERT_TRUE(shows());
    window->hide();
    EXPECT_TRUE(eventually([] { return !isTurned(); }));
    window->show();
    EXPECT_TRUE(eventually(isTurned));
}

TEST_F(WallOfExporters, StandInAWindowAsLargeAsTheLastOne) {
    open(3600);
    EXPECT_EQ(window->size(), QSize(800, 760)) << "as wide as the screen of the tests";
    window->resize(640, 480);
    window->close();
    window.reset();
    open(3600);
    EXPECT_EQ(window->size(), QSize(640, 480));
}

} // namespace

} // namespace vantor::hosts::widget
