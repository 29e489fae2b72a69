// SPDX-License-Identifier: MIT
#include "PseudoTerminal.hpp"
#include "SimulatedStore.hpp"
#include "TestTree.hpp"
#include "hosts/terminal/screen/TerminalDevice.hpp"
#include "hosts/terminal/screen/TerminalState.hpp"
#include "platform/core/FatalStop.hpp"

#include <gmock/gmock.h>

#include <array>
#include <thread>

namespace vantor {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using tests::PseudoTerminal;

constexpr std::string_view shown = "\033[?1049h"; // the alternate screen
constexpr std::string_view putBack = "\033[?1049l";
constexpr std::string_view mouseOff = "\033[?1000l";

class Session : public testing::Test {
protected:
    std::vector<std::string> environment(std::vector<std::string> more = {}) const {
        more.insert(more.begin(),
                    {"TERM=xterm-256color", "LC_ALL=C.UTF-8", "COLORTERM=", "COLORFGBG=15;0",
                     "NO_COLOR=", "DISPLAY=", "WAYLAND_DISPLAY=", "HOME=" + m_home.root().string()});
        return more;
    }
    static std::vector<std::string> demo(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {VANTOR_TERM, "--demo"});
        return more;
    }
    static void expectPutBack(const PseudoTerminal& terminal) {
        EXPECT_TRUE(terminal.isRestored());
        EXPECT_THAT(terminal.output(), HasSubstr(putBack));
        EXPECT_THAT(terminal.output(), HasSubstr(mouseOff));
        EXPECT_THAT(terminal.output(), HasSubstr("\033[?25h")) << "the cursor is seen again";
    }

    tests::TestTree m_home;
};

TEST_F(Session, KeysAndMouseReachTheWidget) {
    PseudoTerminal terminal(demo(), environment());
    ASSERT_TRUE(terminal.waitFor(shown));
    ASSERT_TRUE(terminal.waitFor("Used RAM"));
    EXPECT_FALSE(terminal.isRestored()) << "keys come one by one";
    terminal.send("m");
    EXPECT_TRUE(terminal.waitFor("More"));
    terminal.send(
        "\033[A \033[<65;3;3M"); // an arrow and the wheel do nothing, a blank is the mode's other key
    EXPECT_TRUE(terminal.waitFor("Less"));
    terminal.send("r");
    EXPECT_TRUE(terminal.waitFor("Refreshed"));
    terminal.send("\014");
    EXPECT_TRUE(terminal.waitFor("\033[H\033[2J")) << "Ctrl-L draws everything anew";
    terminal.send("q");
    EXPECT_EQ(terminal.waitForEnd(), 0);
    expectPutBack(terminal);
}

TEST_F(Session, TheTerminalShowsWhoseFiguresTheseAreAndKeepsItsMouseIfAsked) {
    PseudoTerminal terminal(demo({"--no-mouse"}), environment());
    std::string start;
    ASSERT_TRUE(terminal.waitFor("Used RAM", &start));
    EXPECT_THAT(start, HasSubstr("\033[22;2t\033]2;demo \u2013 Vantor\033\\"));
    EXPECT_THAT(start, Not(HasSubstr("\033[?1000h")));
    terminal.send("q");
    EXPECT_EQ(terminal.waitForEnd(), 0);
    EXPECT_THAT(terminal.output(), HasSubstr("\033[23;2t"));
}

TEST_F(Session, SignalsEndItWithTheTerminalPutBack) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        PseudoTerminal terminal(demo(), environment());
        ASSERT_TRUE(terminal.waitFor("Used RAM"));
        number == SIGINT ? terminal.send("\003") : terminal.signal(number);
        const int status = terminal.waitForEnd();
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
        expectPutBack(terminal);
    }
    PseudoTerminal gone(demo(), environment());
    ASSERT_TRUE(gone.waitFor("Used RAM"));
    gone.hangUp();
    EXPECT_NE(gone.waitForEnd(), -1) << "a terminal that goes away ends it";
}

TEST_F(Session, AStormOfSizesEndsInAPictureOfTheLast) {
    PseudoTerminal terminal(demo(), environment());
    ASSERT_TRUE(terminal.waitFor("Used RAM"));
    for (int i = 0; i < 300; ++i) {
        terminal.resize(1 + i * 37 % 211, 1 + i * 17 % 61);
    }
    terminal.resize(60, 1);
    EXPECT_TRUE(terminal.waitFor("CPU "));
    terminal.resize(500, 200);
    EXPECT_TRUE(terminal.waitFor("\033[200;"));
    terminal.send("q");
    EXPECT_EQ(terminal.waitForEnd(), 0);
    expectPutBack(terminal);
}

TEST_F(Session, AShellCanStopAndContinueIt) {
    PseudoTerminal shell({"/bin/bash", "--norc", "--noprofile", "-i"},
                         environment({"PS1=ready> ", "HISTFILE=", "BASH_SILENCE_DEPRECATION_WARNING=1"}));
    ASSERT_TRUE(shell.waitFor("ready> "));
    shell.send(VANTOR_TERM " --demo\n");
    ASSERT_TRUE(shell.waitFor(shown));
    ASSERT_TRUE(shell.waitFor("Used RAM"));
    shell.send("\032");
    ASSERT_TRUE(shell.waitFor(putBack));
    ASSERT_TRUE(shell.waitFor("Stopped"));
    ASSERT_TRUE(shell.waitFor("ready> "));
    shell.send("stty -a | grep -q ' icanon.* echo ' && echo settings $((40 + 2))\n"); // the shell's again
    EXPECT_TRUE(shell.waitFor("settings 42"));
    shell.send("fg\n");
    ASSERT_TRUE(shell.waitFor(shown));
    EXPECT_TRUE(shell.waitFor("Used RAM")) << "all of it is drawn again";
    shell.send("r");
    std::string since;
    EXPECT_TRUE(shell.waitFor("Refreshed", &since));
    EXPECT_THAT(since, Not(HasSubstr(shown))) << "it comes back once";
    shell.send("q");
    EXPECT_TRUE(shell.waitFor(putBack));
    EXPECT_TRUE(shell.waitFor("ready> "));
}

TEST_F(Session, AStoppedOutputHoldsNothingUp) {
    PseudoTerminal terminal(demo(), environment());
    ASSERT_TRUE(terminal.waitFor("Used RAM"));
    terminal.send("\023"); // Ctrl-S
    terminal.send("m");
    terminal.signal(SIGTERM);
    const int status = terminal.waitForEnd();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
    expectPutBack(terminal);
}

TEST_F(Session, AFatalStopPutsTheTerminalBackFirst) {
    // A ring colour of another class stops the widget at its next refresh.
    const auto store = m_home.write("store.plist", tests::storeHolding("").content);
    PseudoTerminal terminal({VANTOR_TERM, "--log", m_home.root() / "log"},
                            environment({"VANTOR_SUITE_FILE=" + store.string()}));
    ASSERT_TRUE(terminal.waitFor("Used RAM"));
    m_home.write("store.plist", tests::storeHolding(tests::storedArchive("root-string")).content);
    terminal.send("r");
    const int status = terminal.waitForEnd();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT) << status;
    expectPutBack(terminal);
    EXPECT_GT(terminal.output().find("vantor: fatal: "), terminal.output().find(putBack))
        << "then it says why";
}

TEST_F(Session, TheLogNeverGetsIntoThePicture) {
    // A ring colour that cannot be decoded is logged at every refresh.
    const auto store = m_home.write("store.plist", tests::storeHolding(tests::storedColor("AAAA")).content);
    const std::string log = m_home.root() / "log";
    for (const bool intoFile : {false, true}) {
        std::vector<std::string> command{VANTOR_TERM};
        if (intoFile) {
            command.insert(command.end(), {"--log", log});
        }
        PseudoTerminal terminal(command, environment({"VANTOR_SUITE_FILE=" + store.string()}));
        ASSERT_TRUE(terminal.waitFor(shown));
        terminal.send("r");
        std::string all;
        ASSERT_TRUE(terminal.waitFor("Refreshed", &all));
        terminal.send("q");
        EXPECT_EQ(terminal.waitForEnd(), 0);
        EXPECT_THAT(all + terminal.output(), Not(HasSubstr("ERRORE")));
    }
    EXPECT_THAT(tests::fileContent(log), HasSubstr("ERRORE in funzione fromData() di Config\n"));
}

TEST_F(Session, AFatalStopInAnyThreadPutsTheTerminalBack) {
    int terminal = -1;
    int other = -1;
    ASSERT_EQ(::openpty(&terminal, &other, nullptr, nullptr, nullptr), 0);
    termios before{};
    ::tcgetattr(other, &before);
    for (const bool isCrash : {false, true}) {
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(STDERR_FILENO);
            hosts::terminal::TerminalState state(other, "<enter>", "<leave>");
            state.enter();
            std::thread([isCrash] {
                isCrash ? static_cast<void>(::raise(SIGSEGV)) : platform::fatalStop("test");
            }).join();
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status));
        std::string written; // in as many pieces as the terminal likes
        pollfd more{terminal, POLLIN, 0};
        for (char byte = 0; !written.ends_with("<leave>") && ::poll(&more, 1, 5000) == 1 &&
                            ::read(terminal, &byte, 1) == 1;) {
            written += byte;
        }
        EXPECT_EQ(written, "<enter><leave>");
        termios after{};
        ::tcgetattr(other, &after);
        EXPECT_EQ(after.c_lflag, before.c_lflag);
    }
    ::close(terminal);
    ::close(other);
}

TEST_F(Session, ATerminalThatTakesNoBytesIsPutBackAllTheSame) {
    int terminal = -1;
    int other = -1;
    ASSERT_EQ(::openpty(&terminal, &other, nullptr, nullptr, nullptr), 0);
    ::fcntl(terminal, F_SETFL, O_NONBLOCK);
    ::fcntl(other, F_SETFL, O_NONBLOCK);
    hosts::terminal::TerminalState state(other, "<enter>", "<leave>");
    state.enter();
    while (::write(other, "picture", 7) > 0) { // until nothing more fits
    }
    state.leave();
    std::string seen;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = ::read(terminal, buffer.data(), buffer.size())) > 0;) {
        seen.append(buffer.data(), static_cast<std::size_t>(count));
    }
    EXPECT_THAT(seen, EndsWith("<leave>"));
    ::close(terminal);
    ::close(other);
}

/// After su(1) the terminal belongs to somebody else and cannot be opened anew; a pipe has no name to open.
TEST_F(Session, ADeviceThatCannotBeOpenedAnewHoldsNothingUpEither) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const auto before = std::signal(SIGPIPE, SIG_IGN); // as the program has it
    hosts::terminal::TerminalDevice output(ends[1]);
    EXPECT_TRUE(output.write(std::string(1'000'000, 'x')));
    EXPECT_TRUE(output.isBlocked());
    EXPECT_EQ(::fcntl(ends[1], F_GETFL) & O_NONBLOCK, 0) << "the shell's own descriptor stays as it was";
    std::string input;
    EXPECT_TRUE(hosts::terminal::TerminalDevice(ends[0]).read(input));
    EXPECT_EQ(input.size(), 4096U) << "a flood is taken in pieces";
    ::close(ends[0]);
    EXPECT_FALSE(output.flush()) << "a terminal that is gone";
    ::close(ends[1]);
    std::signal(SIGPIPE, before);
}

TEST_F(Session, ATerminalThatNobodyHasHeardOfIsReadAsAUsualOne) {
    PseudoTerminal young(demo(), environment({"TERM=xterm-of-tomorrow"}));
    EXPECT_TRUE(young.waitFor(shown));
    EXPECT_TRUE(young.waitFor("Used RAM"));
    young.send("q");
    EXPECT_EQ(young.waitForEnd(), 0);
    const std::size_t lastRow = young.output().find("\033[999;1H\033[K");
    EXPECT_LT(lastRow, young.output().find(putBack))
        << "a shell without another screen goes on at the bottom";
}

TEST_F(Session, PlainTerminalsGetPlainText) {
    PseudoTerminal dumb(demo(), environment({"TERM=dumb"}));
    EXPECT_TRUE(dumb.waitFor("\rRAM "));
    dumb.send("q");
    EXPECT_EQ(dumb.waitForEnd(), 0);
    EXPECT_THAT(dumb.output(), Not(HasSubstr("\033")));
    EXPECT_TRUE(dumb.isRestored());

    PseudoTerminal ascii(demo(), environment({"LC_ALL=C"}));
    EXPECT_TRUE(ascii.waitFor("##"));
    ascii.send("q");
    EXPECT_EQ(ascii.waitForEnd(), 0);
}

TEST_F(Session, TheBackgroundIsAskedForWithoutWaiting) {
    PseudoTerminal terminal(demo({"--color", "24bit"}), environment({"COLORFGBG="}));
    ASSERT_TRUE(terminal.waitFor("\033]11;?\033\\"));
    ASSERT_TRUE(terminal.waitFor("Used RAM")) << "figures come before any answer";
    ASSERT_TRUE(terminal.waitFor("\033[38;2;255;214;10m")) << "yellow for a dark one";
    terminal.send("\033]11;rgb:ffff/ffff/ffff\033\\\033[?62c");
    EXPECT_TRUE(terminal.waitFor("\033[38;2;255;204;0m")) << "yellow for a light background";
    terminal.send("q");
    EXPECT_EQ(terminal.waitForEnd(), 0);
}

} // namespace
} // namespace vantor
