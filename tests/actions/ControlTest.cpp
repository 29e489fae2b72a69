// SPDX-License-Identifier: MIT
#include "TestTree.hpp"
#include "platform/linux/control/LinuxWorkloadControl.hpp"
#include "platform/linux/control/PressureTrigger.hpp"
#include "platform/linux/control/ReclaimFile.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <csignal>

namespace vantor::tests {
namespace {

using namespace platform::linux;
using platform::EndSignal;
using platform::ReclaimAnswer;
using platform::RunningProcess;

class Control : public testing::Test {
protected:
    void group(const std::string& path, int inactive, bool isOurs = true) {
        const std::string folder = "sys/fs/cgroup/user.slice/user-7.slice/user@7.service/" + path;
        m_tree.write(folder + "/cgroup.procs", "11\n12\n");
        m_tree.write(folder + "/memory.stat", "anon 4096\ninactive_anon " + std::to_string(inactive) + "\n");
        m_tree.write(folder + "/cpu.stat", "usage_usec 500\n");
        if (isOurs) {
            m_tree.write(folder + "/memory.reclaim", "");
        }
    }
    const TestTree m_tree;
    LinuxWorkloadControl m_control{{.tree = KernelTree(m_tree.root().string()), .user = 7}};
};

TEST_F(Control, ReclaimsFromApplicationsAtTheEndsOfTheTreeOnly) {
    EXPECT_FALSE(m_control.hasGroups());
    m_tree.write("sys/fs/cgroup/cgroup.controllers", "cpu io memory_x\n");
    EXPECT_FALSE(m_control.hasGroups());
    m_tree.write("sys/fs/cgroup/cgroup.controllers", "cpu memory pids\n");
    EXPECT_TRUE(m_control.hasGroups());
    m_tree.write("proc/self/cgroup",
                 "1:name=systemd:/x\n0::/user.slice/user-7.slice/user@7.service/app.slice/own.scope\n");
    group("app.slice", 9);
    group("app.slice/own.scope", 9);
    group("app.slice/idle.scope", 4096);
    group("app.slice/inner.service", 9);
    group("app.slice/inner.service/leaf", 5);
    group("app.slice/theirs.scope", 9, false);
    group("background.slice/index.service", 3);
    group("session.slice/shell.service", 9);
    group("init.scope", 9);
    std::string found;
    std::vector<platform::ReclaimableGroup> groups = m_control.reclaimableGroups();
    std::ranges::sort(groups, {}, &platform::ReclaimableGroup::path);
    for (const platform::ReclaimableGroup& one : groups) {
        found +=
            one.path + ' ' + std::to_string(one.inactive) + ' ' + std::to_string(one.processorTime) + '\n';
    }
    EXPECT_EQ(found, "app.slice/idle.scope 4096 500\napp.slice/inner.service/leaf 5 500\n"
                     "background.slice/index.service 3 500\n");
    EXPECT_EQ(m_control.reclaimableGroup("app.slice/idle.scope")->inactive, 4096U);
    EXPECT_FALSE(m_control.reclaimableGroup("app.slice/gone.scope").has_value());
    EXPECT_EQ(m_control.processesIn("app.slice/idle.scope"), (std::vector<int>{11, 12}));
    EXPECT_EQ(m_control.reclaim("app.slice/idle.scope", 16384), ReclaimAnswer::done);
    const std::string written =
        fileContent(m_tree.root() / ("sys/fs/cgroup/user.slice/user-7.slice/"
                                     "user@7.service/app.slice/idle.scope/memory.reclaim"));
    EXPECT_EQ(written, "16384 swappiness=max");
    EXPECT_EQ(m_control.reclaim("app.slice/gone.scope", 1), ReclaimAnswer::less);
    m_tree.write("proc/meminfo", "MemTotal: 8 kB\nMemFree: 1 kB\nMemAvailable: 2 kB\n");
    EXPECT_EQ(m_control.memoryLevel(), (platform::MemoryLevel{8192, 2048}));
}

TEST(PressureTrigger, TellsWhatTheKernelWatchesElseItsAverage) {
    const TestTree tree;
    PressureTrigger absent{KernelTree(tree.root().string())};
    EXPECT_FALSE(absent.isShort());
    const auto pressure = [&](const std::string& share) {
        const std::string text =
            "some avg10=" + share +
            " avg60=0.00 avg300=0.00 total=5\nfull avg10=0.00 avg60=0.00 avg300=0.00 total=0\n";
        tree.write("proc/pressure/memory", text);
        PressureTrigger trigger{KernelTree(tree.root().string())};
        EXPECT_EQ(trigger.number(), -1);
        EXPECT_EQ(fileContent(tree.root() / "proc/pressure/memory"),
                  text); // no trigger for what is no kernel
        return trigger.isShort();
    };
    EXPECT_TRUE(pressure("10.00"));
    EXPECT_FALSE(pressure("9.99"));
    PressureTrigger real;
    if (real.number() < 0) {
        GTEST_SKIP() << "this kernel takes no trigger from us";
    }
    EXPECT_TRUE(real.isShort()) << "a wait takes the event with it: a second look finds none";
    EXPECT_NE(real.number(), -1) << "the kernel stopped watching";
}

/// A process of this test's own, which ends with it.
class Child {
public:
    explicit Child(bool isStubborn) {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        m_number = ::fork();
        if (m_number == 0) {
            std::signal(SIGTERM, isStubborn ? SIG_IGN : SIG_DFL);
            (void)!::write(ends[1], "x", 1);
            for (;;) {
                ::pause();
            }
        }
        char ready = 0;
        EXPECT_EQ(::read(ends[0], &ready, 1), 1);
        ::close(ends[0]);
        ::close(ends[1]);
    }
    ~Child() { (void)reap(SIGKILL); }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    [[nodiscard]] int number() const { return m_number; }
    /// The signal that ended it, once it has.
    int reap(int with = 0) {
        int status = 0;
        if (m_number > 0) {
            ::kill(m_number, with);
            ::waitpid(m_number, &status, 0);
            m_number = 0;
        }
        return WTERMSIG(status);
    }

private:
    pid_t m_number = 0;
};

TEST(ProcessHold, EndsTheProcessThatItWasOpenedFor) {
    LinuxWorkloadControl control;
    Child child(false), stubborn(true);
    const RunningProcess process = control.process(child.number()).value();
    EXPECT_EQ(process.parent, control.ownNumber());
    EXPECT_TRUE(process.isThisUsers);
    EXPECT_TRUE(process.program.starts_with("actions-tests")) << process.program;
    RunningProcess other = process;
    --other.identity.start; // one that had the number before
    EXPECT_EQ(control.open(other), nullptr);
    other = process;
    other.group = "app.slice/moved.scope";
    EXPECT_EQ(control.open(other), nullptr);
    const auto handle = control.open(process);
    ASSERT_NE(handle, nullptr);
    EXPECT_TRUE(handle->isRunning());
    EXPECT_EQ(handle->signal(EndSignal::terminate), "");
    EXPECT_EQ(child.reap(), SIGTERM);
    EXPECT_FALSE(handle->isRunning());
    EXPECT_EQ(handle->signal(EndSignal::terminate), ""); // is gone already
    const auto second = control.open(control.process(stubborn.number()).value());
    EXPECT_EQ(second->signal(EndSignal::terminate), "");
    EXPECT_TRUE(second->isRunning());
    EXPECT_EQ(second->signal(EndSignal::kill), "");
    EXPECT_EQ(stubborn.reap(), SIGKILL);
}

} // namespace
} // namespace vantor::tests
