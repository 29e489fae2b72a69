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

constexpr const char* says = "#!/bin/sh\necho vantor.desktop\n";

/// An opener over two scripts of the test's own instead of the desktop's programs.
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
    LinkOpener opener(
        {script("query", "#!/bin/sh\necho \"$@\" >" + path("asked") + "\necho it.desktop\n"), opening(0)});
    open(opener);
    ASSERT_TRUE(hears(1));
    EXPECT_THAT(m_heard, ElementsAre(true));
    EXPECT_EQ(content("asked"), "query default x-scheme-handler/vantor\n");
    EXPECT_EQ(content("opened"), "vantor://action?a=%22$(x)'\n");
}

TEST_F(Links, WithoutAProgramAreNotOpened) {
    const std::string none = script("none", "#!/bin/sh\nexit 0\n");
    for (const LinkOpener::Programs& programs :
         {LinkOpener::Programs{none, opening(0)}, LinkOpener::Programs{path("missing"), opening(0)},
          LinkOpener::Programs{script("query", says), path("missing")}, LinkOpener::Programs{}}) {
        LinkOpener opener(programs);
        m_heard.clear();
        open(opener);
        ASSERT_TRUE(hears(1));
        EXPECT_THAT(m_heard, ElementsAre(false)) << programs.query;
    }
    EXPECT_EQ(content("opened"), "");
    LinkOpener failing({script("query", says), opening(3)});
    open(failing);
    ASSERT_TRUE(hears(2));
    EXPECT_THAT(m_heard, ElementsAre(false, false)) << "it says so by its status";
}

TEST_F(Links, AskWhetherThereIsAProgramAndStartNone) {
    std::size_t asked = 0;
    for (const std::string& query :
         {script("some", says), script("none", "#!/bin/sh\nexit 0\n"), std::string()}) {
        LinkOpener opener({query, opening(0)});
        opener.ask("vantor", [this](bool isThere) { m_heard.push_back(isThere); });
        ASSERT_TRUE(hears(++asked));
    }
    EXPECT_THAT(m_heard, ElementsAre(true, false, true)) << "true where nobody can be asked";
    EXPECT_EQ(content("opened"), "");
}

TEST_F(Links, AreOpenedOnceHoweverOftenTheyArePressed) {
    LinkOpener opener({script("query", "#!/bin/sh\ncat " + path("gate") + "\n"), opening(0)});
    for (int press = 0; press < 60; ++press) {
        open(opener);
    }
    std::ofstream(path("gate")) << "it.desktop\n" << std::flush; // for the one that waits there
    ASSERT_TRUE(hears(60));
    EXPECT_EQ(std::ranges::count(m_heard, true), 60);
    EXPECT_EQ(std::ranges::count(content("opened"), '\n'), 1);
    open(opener);
    std::ofstream(path("gate")) << std::flush;
    ASSERT_TRUE(hears(61)) << "the next press asks anew";
    EXPECT_FALSE(m_heard.back());
}

TEST_F(Links, NobodyIsCalledBackAfterTheEnd) {
    std::optional<LinkOpener> opener(
        std::in_place,
        LinkOpener::Programs{script("query", "#!/bin/sh\necho $$ >" + path("query.new") + "\nmv " +
                                                 path("query.new") + " " + path("running") + "\nexec cat " +
                                                 path("gate") + "\n"),
                             opening(0)});
    open(*opener);
    ASSERT_TRUE(turnUntil([this] { return !content("running").empty(); }, 20));
    const pid_t query = std::stoi(content("running"));
    opener.reset();
    EXPECT_TRUE(turnUntil([query] { return ::kill(query, 0) != 0; }, 20)) << "the query goes too";
    platform::RunLoop::main().turn(std::chrono::steady_clock::now());
    EXPECT_THAT(m_heard, IsEmpty());
    EXPECT_EQ(content("opened"), "");
}

TEST_F(Links, NeedADesktop) {
    ::unsetenv("DISPLAY");
    ::unsetenv("WAYLAND_DISPLAY");
    LinkOpener opener({script("query", says), opening(0)});
    open(opener);
    EXPECT_THAT(m_heard, IsEmpty()) << "heard in a turn of the loop";
    ASSERT_TRUE(hears(1));
    EXPECT_THAT(m_heard, ElementsAre(false));
    EXPECT_EQ(content("opened"), "");
}

} // namespace
} // namespace vantor::hosts::common
