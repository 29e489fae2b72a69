// SPDX-License-Identifier: MIT
#include "HandTurnedQueue.hpp"
#include "TestTree.hpp"
#include "platform/linux/workload/ApplicationId.hpp"
#include "platform/linux/workload/DesktopEntry.hpp"
#include "platform/linux/workload/LinuxWorkload.hpp"
#include "platform/linux/workload/WorkText.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <regex>

namespace vantor::tests {
namespace {

namespace fs = std::filesystem;
using namespace platform::linux;
using platform::ApplicationUse;
using platform::ListedFor;

TEST(ApplicationId, IsInTheNamesThatDesktopsGiveTheirGroups) {
    const auto id = [](std::string_view path) { return applicationIdOf(path).value_or("-"); };
    EXPECT_EQ(id("app.slice/app-gnome-google\\x2dchrome-11396.scope"), "google-chrome");
    EXPECT_EQ(id("app.slice/app-gnome-org.gnome.Nautilus-0.scope"), "org.gnome.Nautilus");
    EXPECT_EQ(id("app.slice/app-flatpak-org.telegram.desktop-12345.scope"), "org.telegram.desktop");
    EXPECT_EQ(id("app.slice/app-org.kde.konsole-9d2c.scope"), "org.kde.konsole");
    EXPECT_EQ(id("app.slice/app-org.kde.dolphin@0f1e2d.service"), "org.kde.dolphin");
    EXPECT_EQ(id("app.slice/app-gnome-org.gnome.Foo-123.service"), "org.gnome.Foo");
    EXPECT_EQ(id("app.slice/app-im\\x2dlaunch@autostart.service"), "im-launch");
    EXPECT_EQ(id("app.slice/gnome-launched-firefox-esr.desktop-1234.scope"), "firefox-esr");
    EXPECT_EQ(id("app.slice/snap.firefox.firefox-a1b2c3d4-0000-1111-2222-333344445555.scope"),
              "firefox_firefox");
    EXPECT_EQ(id("app.slice/dbus.slice/dbus-:1.23-org.example.App@0.service"), "org.example.App");
    EXPECT_EQ(id("app.slice/app-org.gnome.Terminal.slice/vte-spawn-a1b2.scope"), "org.gnome.Terminal");
    for (const char* const none :
         {"", "app.slice", "app.slice/gpg-agent.service", "session.slice/pipewire.service", "init.scope",
          "app.slice/app-.scope", "app.slice/app-x.scope", "session-2.scope",
          "app.slice/app-a-..\\x2fevil-1.scope", "app.slice/app-a-x\\x0ay-1.scope"}) {
        EXPECT_EQ(id(none), "-") << none;
    }
}

TEST(DesktopEntry, GivesNameIconAndProgram) {
    const auto read = [](std::string_view text) { return parseDesktopEntry(text); };
    const auto entry =
        read("# x\n[Desktop Entry]\nName[de]=Dateien\nName = Files\\sand \\\\ more\nIcon=folder\n"
             "Exec=env A=b \"/opt/my files/nau\" --new %U\n[Desktop Action x]\nName=Other\n");
    EXPECT_EQ(entry, (DesktopEntry{"Files and \\ more", "folder", "nau"}));
    EXPECT_FALSE(read("[Desktop Entry]\nType=Link\nName=x\n").has_value());
    EXPECT_FALSE(read("[Other]\nName=x\n").has_value());
    EXPECT_FALSE(read("[Desktop Entry]\nExec=x\n").has_value());
}

TEST(WorkText, TakesWhatTheKernelWritesAndNothingElse) {
    const auto pressure = parsePressure("some avg10=0.50 avg60=1.25 avg300=2.00 total=77\nfull avg10=0.00\n");
    EXPECT_EQ(pressure, (platform::Pressure{0.5, 1.25, 2, 77}));
    for (const char* const bad :
         {"", "full avg10=0 avg60=0 avg300=0 total=0\n", "some avg10=0.50 avg60=1.25\n",
          "some avg10=nan avg60=0 avg300=0 total=0\n", "some avg10=0 avg60=0 avg300=0 total=0",
          "some avg10=0 avg60=0 avg300=101 total=0\n"}) {
        EXPECT_FALSE(parsePressure(bad).has_value()) << bad;
    }
    const auto stat = parseProcessStat("7 (a) b) (c) S 1 7 5 0 -1 0 0 0 0 0 11 12 0 0 20 0 1 0 999 1 2\n");
    EXPECT_EQ(stat->name, "a) b) (c");
    EXPECT_EQ(stat->parent * 1000 + stat->session, 1005);
    EXPECT_EQ(stat->start, 999U);
    EXPECT_FALSE(parseProcessStat("7 (a) S 1 7 5 0 -1").has_value());
    EXPECT_FALSE(parseProcessStat("7 )a( S").has_value());
    EXPECT_EQ(stat->ticks, 23U);
    using platform::ProcessorTicks;
    EXPECT_EQ(
        parseProcessorTicks("cpu  9 9 9 9 9 9 9 9 9 9\ncpu0 1 2 3 100 20 4 5 6 7 8\ncpu12 1\nintr 5\ncpu3 7"),
        (std::vector<ProcessorTicks>{{21, 120}, {1, 0}}));
    EXPECT_EQ(parseLoadAverages("0.50 1.25 10.00 1/200 999\n"), (std::array{0.5, 1.25, 10.0}));
    EXPECT_FALSE(parseLoadAverages("0.50 x 1\n").has_value());
    EXPECT_EQ(parseSwapSpace("SwapTotal: 8 kB\nSwapFree: 9 kB\n"), std::nullopt);
    EXPECT_EQ(parseSwapSpace("SwapTotal: 8 kB\nSwapFree: 2 kB\n"), (platform::SwapSpace{8192, 2048}));
}

TEST(WorkText, TellsAProcessByItsStatusAlone) {
    const auto all = [](const std::string& text) {
        const auto status = parseProcessStatus(text);
        return !status
                   ? "-"
                   : status->stat.name + '|' + std::to_string(status->stat.parent) + '|' +
                         std::to_string(status->stat.session) + (status->stat.isKernelThread ? "|k|" : "|") +
                         std::to_string(status->memory.memory) + '|' + std::to_string(status->memory.swap);
    };
    const std::string place = "State:\tS (sleeping)\nPPid:\t7\nNSpid:\t9\t1\nNSsid:\t8\t1\n";
    const std::string memory =
        "VmRSS:\t 9 kB\nRssAnon:\t 2 kB\nRssFile:\t 9 kB\nRssShmem:\t 1 kB\nVmSwap:\t 4 kB\n";
    EXPECT_EQ(all("Name:\t a\\\\n\\nb: \n" + place + "Kthread:\t0\n" + memory), " a\\n\nb: |7|8|3072|4096");
    EXPECT_EQ(all("Name:\ta\n" + place + "Kthread:\t1\n"), "a|7|8|k|0|0");
    EXPECT_EQ(all("Name:\ta\n" + place), "a|7|8|k|0|0") << "an older kernel's";
    EXPECT_EQ(all("Name:\ta\nState:\tZ (zombie)\nPPid:\t7\nNSsid:\t8\n"), "a|7|8|0|0") << "an ended one";
    EXPECT_EQ(all("Name:\ta\nState:\tS (sleeping)\nPPid:\t7\n" + memory), "-") << "without namespaces";
    EXPECT_EQ(all("Name:\ta\nNSsid:\t8"), "-") << "cut short";
}

/// By a flag in the one and by a line, or those of its memory, in the other.
TEST(WorkText, TellsTheKernelsOwnAlikeByEitherText) {
    const auto read = [](const std::string& process, const char* name) {
        return KernelTree("/").read("proc/" + process + name).text;
    };
    std::size_t compared = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const std::string process = entry.path().filename();
        const std::string text = read(process, "/stat"), statusText = read(process, "/status");
        const auto stat = parseProcessStat(text), again = parseProcessStat(read(process, "/stat"));
        const auto status = parseProcessStatus(statusText);
        // One may start another program, or end, between two looks.
        if (stat && status && again && again->name == stat->name && again->faults == stat->faults) {
            ++compared;
            EXPECT_EQ(status->stat.isKernelThread, stat->isKernelThread) << text << statusText;
            const std::string older = std::regex_replace(statusText, std::regex("Kthread:.*\n"), "");
            EXPECT_EQ(parseProcessStatus(older)->stat.isKernelThread, stat->isKernelThread) << older;
        }
    }
    EXPECT_GT(compared, 0U) << "this process at the least";
}

class WorkloadTest : public testing::Test {
protected:
    void process(int number, int parent, int session, const std::string& name, const std::string& program,
                 int kibibytes, int flags = 0, bool hasTerminal = false) {
        const std::string folder = "proc/" + std::to_string(number);
        m_tree.write(folder + "/stat", std::to_string(number) + " (" + name + ") S " +
                                           std::to_string(parent) + " 1 " + std::to_string(session) +
                                           (hasTerminal ? " 34816 0 " : " 0 0 ") + std::to_string(flags) +
                                           " 0 0 0 0 150 50 0 0 0 0 0 0" + " 4" + std::to_string(number) +
                                           " 0\n");
        const std::string place = "Name:\t" + name + "\nState:\tS (sleeping)\nPPid:\t" +
                                  std::to_string(parent) + "\nNSsid:\t" + std::to_string(session) + "\n";
        const std::string memory = "RssAnon:\t" + std::to_string(kibibytes) +
                                   " kB\nRssFile:\t 99999 kB\nRssShmem:\t 1 kB\nVmSwap:\t 2 kB\n";
        m_tree.write(folder + "/status", flags == 0 ? place + memory : place); // the kernel's own have none
        if (!program.empty()) {
            fs::create_symlink(program, m_tree.root() / folder / "exe");
        }
    }
    void group(const std::string& path, int anonymous, const std::string& processes) {
        const std::string user = std::to_string(::getuid());
        const std::string folder =
            "sys/fs/cgroup/user.slice/user-" + user + ".slice/user@" + user + ".service/" + path;
        m_tree.write(folder + "/cgroup.procs", processes);
        m_tree.write(folder + "/memory.stat",
                     "anon " + std::to_string(anonymous) + "\nfile 12345678\nkernel 5\nshmem 7\n");
        m_tree.write(folder + "/cpu.stat", "usage_usec 1000000\nuser_usec 5\n");
        m_tree.write(folder + "/memory.swap.current", "30\n");
    }
    void entry(const std::string& id, const std::string& name, const std::string& program) {
        m_tree.write("entries/" + id + ".desktop",
                     "[Desktop Entry]\nName=" + name + "\nExec=" + program + " %U\nIcon=" + id + "\n");
    }
    /// name: memory/swap/processes and seconds of processor time, in the order of their names.
    std::string applications(ListedFor purpose = ListedFor::memory) {
        std::vector<ApplicationUse> uses = m_workload.applications(purpose);
        std::ranges::sort(uses, {}, &ApplicationUse::name);
        std::string text;
        for (const ApplicationUse& use : uses) {
            text += use.name + (use.isService ? "*" : "") + ": " + std::to_string(use.memory) + '/' +
                    std::to_string(use.swap) + '/' + std::to_string(use.processes.size()) + ' ' +
                    std::to_string(use.processorTime / 1'000'000) + "s\n";
        }
        return text;
    }
    const TestTree m_tree;
    LinuxWorkload m_workload{
        {.tree = KernelTree(m_tree.root().string()),
         .user = ::getuid(),
         .ticksPerSecond = 100,
         .entryFolders = {(m_tree.root() / "entries").string(), (m_tree.root() / "later").string()}}};
};

TEST_F(WorkloadTest, CountsByGroupWhereEachApplicationHasOne) {
    m_tree.write("sys/fs/cgroup/cgroup.controllers", "cpu memory\n");
    entry("org.x.Files", "Files\x1B[31m", "/usr/bin/files");
    for (const int number : {11, 12, 13, 14, 15, 16}) {
        process(number, 1, 1, "p", "", 100);
    }
    group("app.slice/app-gnome-org.x.Files-1.scope", 1000, "11\n12\n");
    group("app.slice/app-gnome-org.x.Files-2.scope", 500, "13\n");
    group("app.slice/app-org.x.Other-3.scope", 2000, "14\n99\n0\n");
    group("app.slice/gpg-agent.service", 100, "15\n");
    group("session.slice/pipewire.service", 10, "16\n");
    group("init.scope", 20, "17\n");
    group("app.slice/app-empty-4.scope", 9999, "");
    EXPECT_EQ(applications(),
              "Files\xEF\xBF\xBD[31m: 1514/60/3 2s\nOther: 2007/30/1 1s\nSession services*: 44/60/1 2s\n"
              "gpg-agent: 107/30/1 1s\n");
}

TEST_F(WorkloadTest, TellsTheProcessesBehindAnApplication) {
    const std::string user = std::to_string(::getuid());
    const std::string manager = "/user.slice/user-" + user + ".slice/user@" + user + ".service/";
    const ApplicationUse use{.processes = {{11, 411}, {12, 412}, {13, 7}, {14, 414}}};
    for (const int number : {11, 12, 13}) {
        process(number, 1, 1, "p", "", number); // 13 stands for another one by now, 14 has ended
        m_tree.write("proc/" + std::to_string(number) + "/cgroup", "0::" + manager + "app.slice/a.scope\n");
    }
    m_tree.write("sys/fs/cgroup" + manager + "app.slice/a.scope/memory.peak", "123456\n");
    platform::ApplicationDetail detail = m_workload.detail(use);
    ASSERT_EQ(detail.processes.size(), 2U);
    EXPECT_EQ(detail.processes[0].identity.number, 12);
    EXPECT_EQ(detail.processes[1].memory, 12U * 1024);
    EXPECT_EQ(detail.peak, 123456U);
    m_tree.write("proc/12/cgroup", "0::" + manager + "app.slice/b.scope\n");
    EXPECT_FALSE(m_workload.detail(use).peak.has_value());
    m_tree.write("proc/12/cgroup", "0::/user.slice/user-" + user + ".slice/session-2.scope\n");
    EXPECT_FALSE(m_workload.detail({.processes = {{12, 412}}}).peak.has_value());
}

TEST_F(WorkloadTest, TellsFrequencyAndTemperatureWhereTheKernelDoes) {
    const auto state = [this] {
        return LinuxWorkload({.tree = KernelTree(m_tree.root().string()), .entryFolders = {}})
            .processorState();
    };
    EXPECT_FALSE(state().hertz || state().celsius || state().loads);
    m_tree.write("sys/devices/system/cpu/cpufreq/policy0/scaling_cur_freq", "800000\n");
    m_tree.write("sys/devices/system/cpu/cpufreq/policy4/scaling_cur_freq", "2400000\n");
    m_tree.write("sys/devices/system/cpu/cpufreq/boost", "1\n");
    m_tree.write("sys/class/hwmon/hwmon0/name", "nvme\n");
    m_tree.write("sys/class/hwmon/hwmon0/temp1_input", "90000\n");
    m_tree.write("sys/class/hwmon/hwmon1/name", "coretemp\n");
    m_tree.write("sys/class/hwmon/hwmon1/temp2_input", "54500\n"); // some chips begin with 2
    m_tree.write("sys/class/hwmon/hwmon1/temp3_input", "-1000\n");
    EXPECT_EQ(state().hertz, 1.6e9);
    EXPECT_EQ(state().celsius, 54.5);
}

TEST_F(WorkloadTest, FallsBackToWhatStartedAProcess) {
    entry("editor-entry", "Editor", "/opt/edit/bin/editor");
    entry("org.y.App", "Flat App", "flatpak run org.y.App");
    m_tree.write("later/editor-entry.desktop", "[Desktop Entry]\nName=Hidden by the first\nExec=term\n");
    process(10, 1, 10, "session", "/usr/bin/session", 1); // leads the session
    process(20, 10, 10, "editor", "/opt/edit/bin/editor (deleted)", 100);
    process(21, 20, 10, "helper", "/usr/lib/helper", 10); // of the editor
    process(30, 10, 10, "term", "/usr/bin/term", 5);
    process(31, 30, 31, "bash", "/bin/bash", 3, 0, true); // belongs to its terminal,
    process(32, 31, 31, "make", "/usr/bin/make", 4);      // what runs in it stands for itself
    process(40, 1, 10, "bwrap", "/usr/bin/bwrap", 1);
    process(41, 40, 10, "app", "/app/bin/app", 50);
    m_tree.write("proc/41/root/.flatpak-info", "[Instance]\nname=wrong\n[Application]\nname=org.y.App\n");
    process(50, 2, 0, "kworker", "", 0, 0x00208040);
    const auto kib = [](int kibibytes) { return std::to_string(kibibytes * 1024); };
    const std::string expected = "Editor: " + kib(112) + '/' + kib(4) + "/2 4s\nFlat App: " + kib(53) + '/' +
                                 kib(4) + "/2 4s\nmake: " + kib(5) + '/' + kib(2) +
                                 "/1 2s\nsession: " + kib(2) + '/' + kib(2) + "/1 2s\nterm: " + kib(10) +
                                 '/' + kib(4) + "/2 4s\n";
    EXPECT_EQ(applications(), expected) << "where nothing counts as local, a child reads the entries";
    m_tree.write("proc/self/mountinfo", "1 0 0:1 / / rw - tmpfs x rw\n");
    EXPECT_EQ(applications(), expected);

    const std::string untimed = std::regex_replace(expected, std::regex(" [0-9]+s"), " 0s");
    EXPECT_EQ(applications(ListedFor::memoryOnce), untimed) << "of one file for each process";
    EXPECT_EQ(applications(), expected) << "after the single look";
    EXPECT_EQ(applications(ListedFor::processorTime),
              std::regex_replace(expected, std::regex(": [0-9]+/[0-9]+/"), ": 0/0/"));
    m_tree.write("proc/32/status", "RssAnon:\t4 kB\nRssShmem:\t 1 kB\nVmSwap:\t 2 kB\n");
    EXPECT_NE(applications(ListedFor::memoryOnce).find("make: " + kib(5) + '/' + kib(2) + "/1 2s"),
              std::string::npos)
        << "a status that tells no session";
}

TEST_F(WorkloadTest, TellsApartWhatAPlainWindowManagerStarts) {
    const auto start = [this](int number, int parent, int session, const char* name, bool hasTerminal) {
        process(number, parent, session, name, "", 1, 0, hasTerminal);
    };
    // By startx from the shell of a console, whose login is another user's.
    start(100, 99, 100, "bash", true);
    start(101, 100, 100, "startx", true);
    start(102, 101, 100, "xinit", true);
    start(103, 102, 103, "Xorg", false);
    start(104, 102, 100, "dwm", true);
    start(110, 104, 110, "firefox", false); // each in a session of its own
    start(111, 110, 110, "Web Content", false);
    start(112, 111, 112, "crashhelper", false);
    start(120, 104, 120, "st", false);
    start(121, 120, 121, "bash", true); // belongs to its terminal
    start(122, 121, 121, "vim", true);
    start(123, 122, 123, "clangd", false); // of the editor, though it leads a session
    // By a display manager: the window manager leads, and its menu takes no session.
    start(200, 98, 200, "fluxbox", false);
    start(210, 200, 200, "gimp", false);
    start(220, 200, 200, "xterm", false);
    start(221, 220, 221, "fish", true);
    // Over the net, and the user's service manager.
    start(300, 97, 97, "sshd", false);
    start(301, 300, 301, "sh", false);
    start(302, 301, 301, "node", false);
    start(400, 1, 400, "systemd", false);
    start(401, 400, 401, "pipewire", false);
    std::string names;
    for (const ListedFor purpose : {ListedFor::memory, ListedFor::memoryOnce}) {
        std::vector<ApplicationUse> uses = m_workload.applications(purpose);
        std::ranges::sort(uses, {}, &ApplicationUse::name);
        for (const ApplicationUse& use : uses) {
            names += use.name + ':';
            for (const platform::ProcessIdentity& each : use.processes) {
                names += ' ' + std::to_string(each.number);
            }
            names += '\n';
        }
    }
    const std::string once =
        "Xorg: 103\nbash: 100\nfirefox: 110 111 112\nfluxbox: 200\ngimp: 210\nnode: 302\n"
        "pipewire: 401\nsshd: 300 301\nst: 120 121\nstartx: 101 102 104\nsystemd: 400\n"
        "vim: 122 123\nxterm: 220 221\n";
    EXPECT_EQ(names, once + once);
}

TEST_F(WorkloadTest, CountsAContainersProcessesWhoseSessionIsOutside) {
    process(1, 0, 0, "init", "/bin/init", 1);
    process(2, 1, 0, "server", "/bin/server", 10);
    process(3, 2, 0, "worker", "/bin/worker", 20);
    process(4, 1, 4, "cron", "/bin/cron", 5);
    const auto kib = [](int kibibytes) { return std::to_string(kibibytes * 1024); };
    EXPECT_EQ(applications(), "cron: " + kib(6) + '/' + kib(2) + "/1 2s\ninit: " + kib(2) + '/' + kib(2) +
                                  "/1 2s\nserver: " + kib(32) + '/' + kib(4) + "/2 4s\n");
}

TEST_F(WorkloadTest, CountsSharedPagesByPartsWhereSomebodyGoesOnAsking) {
    HandTurnedQueue queue;
    const auto kilobytes = [this] {
        const std::string text = applications();
        return std::stol(text.substr(text.find(": ") + 2)) / 1024;
    };
    for (int number = 20; number < 27; ++number) { // one application of seven processes
        process(number, number == 20 ? 10 : 20, 10, "app", "", 1000 + number);
        m_tree.write("proc/" + std::to_string(number) + "/smaps_rollup",
                     "5500-7fff ---p 00000000 00:00 0 [rollup]\nRss: 5 kB\nPss: 9 kB\nPss_Anon: 100 kB\n"
                     "Pss_File: 7 kB\nPss_Shmem: 1 kB\nSwapPss: 0 kB\n");
    }
    process(10, 1, 10, "session", "", 0);
    fs::remove_all(m_tree.root() / "proc/10");
    const long whole = 7 * 1000 + 20 + 21 + 22 + 23 + 24 + 25 + 26 + 7;
    EXPECT_EQ(kilobytes(), whole);
    (void)applications(ListedFor::memoryOnce);
    (void)applications(ListedFor::processorTime);
    EXPECT_EQ(queue.waiting(), 0U); // a single look costs nothing more
    EXPECT_EQ(kilobytes(), whole);
    queue.drain();
    EXPECT_EQ(kilobytes(), 5 * 101 + 2 * 1000 + 20 + 21 + 2); // the five largest
    fs::remove(m_tree.root() / "proc/21/smaps_rollup");       // as where it may not be read
    queue.drain();
    EXPECT_EQ(kilobytes(), 6 * 101 + 1000 + 21 + 1);
    process(26, 20, 10, "app", "", 1036); // it grew by ten since
    EXPECT_EQ(kilobytes(), 6 * 101 + 10 + 1000 + 21 + 1);
    process(26, 20, 10, "app", "", 50);
    EXPECT_EQ(kilobytes(), 5 * 101 + 1000 + 21 + 1); // by more than its part
}

} // namespace
} // namespace vantor::tests
