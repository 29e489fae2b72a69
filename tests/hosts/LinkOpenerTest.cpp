// SPDX-License-Identifier: MIT
#include "hosts/common/LinkOpener.hpp"

#include "TestTree.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "platform/time/NSTimer.hpp"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <sstream>

namespace vantor::hosts::common {
namespace {

using platform::NSURL;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// An opener over a script and a desktop entry of the test's own instead of the desktop's.
class Links : public ::testing::Test {
protected:
    Links() {
        ::setenv("DISPLAY", ":test", 1);
        ::mkfifo(path("gate").c_str(), 0600);
        // So that what is waited for is looked at now and then.
        platform::NSTimer::scheduledTimerWithTimeInterval(
            0.02, [] {}, true);
    }
    ~Links() override { platform::RunLoop::main().clear(); }

    std::string path(const std::string& name) const { return (m_tree.root() / name).string(); }
    std::string script(const std::string& name, const std::string& text) const {
        const std::string written = m_tree.write(name, text).string();
        ::chmod(written.c_str(), 0700);
        return written;
    }
    std::string content(const std::string& name) const {
        std::stringstream text;
        text << std::ifstream(path(name)).rdbuf();
        return text.str();
    }
    /// One that writes down what it is asked to open, and ends with a status.
    std::string opening(int status) const {
        return script("open", "#!/bin/sh\nprintf '%s\\n' \"$@\" >>" + path("opened") + "\nexit " +
                                  std::to_string(status) + "\n");
    }
    LinkHandlers handlers() const {
        m_tree.write("applications/v.desktop",
                     "[Desktop Entry]\nExec=v %u\nMimeType=text/plain;x-scheme-handler/vantor;\n");
        return {{}, {path("applications")}};
    }
    void open(LinkOpener& opener, std::string_view link = "vantor://action?a=%22$(x)'") {
        opener.open(*NSURL::URLWithString(link), [this](bool opened) { m_heard.push_back(opened); });
    }
    bool hears(std::size_t count) {
        return turnUntil([&] { return m_heard.size() >= count; }, 20);
    }

    tests::TestTree m_tree;
    std::vector<bool> m_heard;
};

TEST_F(Links, GoToTheirProgramAsTheyAre) {
    LinkOpener opener({opening(0), handlers()});
    open(opener);
    ASSERT_TRUE(hears(1));
    EXPECT_THAT(m_heard, ElementsAre(true));
    EXPECT_EQ(content("opened"), "vantor://action?a=%22$(x)'\n");
}

TEST_F(Links, WithoutAProgramAreNotOpened) {
    for (const LinkOpener::Programs& programs :
         {LinkOpener::Programs{opening(0), {}}, LinkOpener::Programs{path("missing"), handlers()},
          LinkOpener::Programs{"", handlers()}}) {
        LinkOpener opener(programs);
        m_heard.clear();
        open(opener);
        ASSERT_TRUE(hears(1));
        EXPECT_THAT(m_heard, ElementsAre(false)) << programs.open;
    }
    EXPECT_EQ(content("opened"), "");
    LinkOpener failing({opening(3), handlers()});
    open(failing);
    ASSERT_TRUE(hears(2));
    EXPECT_THAT(m_heard, ElementsAre(false, false)) << "it says so by its status";
}

TEST_F(Links, AskWhetherThereIsAProgramAndStartNone) {
    for (const LinkHandlers& some : {handlers(), LinkHandlers()}) {
        LinkOpener opener({opening(0), some});
        opener.ask("vantor", [this](bool isThere) { m_heard.push_back(isThere); });
        EXPECT_TRUE(hears(some.applications.empty() ? 2 : 1));
    }
    EXPECT_THAT(m_heard, ElementsAre(true, false));
    EXPECT_EQ(content("opened"), "");
}

/// A program that waits at the gate.
TEST_F(Links, AreOpenedOnceHoweverOftenTheyArePressed) {
    const std::string waiting =
        script("open", "#!/bin/sh\necho \"$1\" >>" + path("opened") + "\nread line <" + path("gate") + "\n");
    LinkOpener opener({waiting, handlers()});
    for (int press = 0; press < 60; ++press) {
        open(opener);
    }
    std::ofstream(path("gate")) << "go\n" << std::flush;
    ASSERT_TRUE(hears(60));
    EXPECT_EQ(std::ranges::count(m_heard, true), 60);
    EXPECT_EQ(std::ranges::count(content("opened"), '\n'), 1);
    open(opener);
    std::ofstream(path("gate")) << "go\n" << std::flush;
    ASSERT_TRUE(hears(61));
    EXPECT_EQ(std::ranges::count(content("opened"), '\n'), 2) << "the next press opens it anew";
}

/// The thread that starts the program must not look at what the main thread may be changing.
TEST_F(Links, GoWithTheEnvironmentOfThePress) {
    ::setenv("VANTOR_TEST_PRESS", "then", 1);
    LinkOpener opener(
        {script("open", "#!/bin/sh\necho $VANTOR_TEST_PRESS >" + path("opened") + "\n"), handlers()});
    open(opener);
    ::setenv("VANTOR_TEST_PRESS", "later", 1);
    ASSERT_TRUE(hears(1));
    EXPECT_EQ(content("opened"), "then\n");
}

TEST_F(Links, NobodyIsCalledBackAfterTheEnd) {
    std::optional<LinkOpener> opener(
        std::in_place,
        LinkOpener::Programs{script("open", "#!/bin/sh\necho $$ >" + path("running.new") + "\nmv " +
                                                path("running.new") + " " + path("running") +
                                                "\nread line <" + path("gate") + "\n"),
                             handlers()});
    open(*opener);
    ASSERT_TRUE(turnUntil([this] { return !content("running").empty(); }, 20));
    const pid_t program = std::stoi(content("running"));
    opener.reset();
    std::ofstream(path("gate")) << "go\n" << std::flush;
    EXPECT_TRUE(turnUntil([program] { return ::kill(program, 0) != 0; }, 20)) << "waited for all the same";
    platform::RunLoop::main().turn(std::chrono::steady_clock::now());
    EXPECT_THAT(m_heard, IsEmpty());
}

TEST_F(Links, NeedADesktop) {
    ::unsetenv("DISPLAY");
    ::unsetenv("WAYLAND_DISPLAY");
    LinkOpener opener({opening(0), handlers()});
    open(opener);
    EXPECT_THAT(m_heard, IsEmpty()) << "heard in a turn of the loop";
    ASSERT_TRUE(hears(1));
    EXPECT_THAT(m_heard, ElementsAre(false));
    EXPECT_EQ(content("opened"), "");
}

} // namespace
} // namespace vantor::hosts::common
