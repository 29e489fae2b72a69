// SPDX-License-Identifier: MIT
#include "Load.hpp"
#include "TreeMachine.hpp"
#include "platform/linux/figures/TickAccount.hpp"
#include "platform/linux/records/TickScale.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace vantor::tests {
namespace {

using namespace std::chrono_literals;
using namespace platform::linux;
using platform::host_cpu_load_info;

/// A machine with a /proc/stat that the test rewrites, and the loads between its readings.
class Ticks : public testing::Test {
protected:
    /// The line's numbers, and how many processors are listed below it.
    void write(const std::string& numbers, int processors = 4) {
        std::string text = "cpu  " + numbers + '\n';
        for (int i = 0; i < processors; ++i) {
            text += "cpu" + std::to_string(i) + " 1 2 3 4 5 6 7 8 0 0\n";
        }
        tree.write("proc/stat", text + "btime 1700000000\n");
    }
    Load next() {
        host_cpu_load_info now{};
        EXPECT_EQ(machine->hostCpuLoad(now), platform::KERN_SUCCESS);
        EXPECT_TRUE(now.user >= last.user && now.system >= last.system && now.idle >= last.idle &&
                    now.nice >= last.nice);
        const Load load = loadBetween(std::exchange(last, now), now);
        EXPECT_FALSE(std::isnan(load.idle)) << "no time passed between two answers";
        return load;
    }

    TestTree tree;
    TreeMachine machine{tree.root()};
    host_cpu_load_info last{};
};

TEST_F(Ticks, IdleTimeThatFallsIsWhatTheClockLeavesOver) {
    write("1000 0 1000 100000 5000 0 0 0 0 0");
    next();
    machine.pass(2s); // 800 ticks; iowait falls by more than idle rises
    write("1200 0 1100 100300 4000 0 0 0 0 0");
    const Load load = next();
    EXPECT_NEAR(load.user, 25, 0.1);
    EXPECT_NEAR(load.system, 12.5, 0.1);
    machine.pass(2s); // and the next interval is measured again
    write("1400 0 1100 100900 4000 0 0 0 0 0");
    EXPECT_NEAR(next().user, 25, 0.1);
    EXPECT_EQ(machine.failedSources(), "");
}

TEST_F(Ticks, ProcessorsVanishAndComeBackWithAllThatTheyEverIdled) {
    write("100000 0 100000 40000000 0 0 0 0 0 0", 4);
    next();
    machine.pass(2s);
    write("100100 0 100000 30000500 0 0 0 0 0 0", 3);
    EXPECT_NEAR(next().user, 12.5, 0.5);
    machine.pass(2s);
    write("100160 0 100000 30001040 0 0 0 0 0 0", 3);
    EXPECT_NEAR(next().user, 10, 0.2);
    machine.pass(2s);
    write("100280 0 100000 40002000 0 0 0 0 0 0", 4);
    EXPECT_NEAR(next().user, 15, 0.5); // of four again
    machine.pass(2s);
    write("100360 0 100000 40002720 0 0 0 0 0 0", 4);
    EXPECT_NEAR(next().user, 10, 0.2);
}

TEST_F(Ticks, ProcessorsThatComeAreJudgedByTheirNumber) {
    write("1000 0 1000 100000 0 0 0 0 0 0", 2);
    next();
    machine.pass(2s); // 14 processors more, all half busy
    write("2600 0 1000 101600 0 0 0 0 0 0", 16);
    EXPECT_NEAR(next().user, 50, 0.1);
}

TEST_F(Ticks, StandingStillAndUnreadableCountAsIdleByTheClock) {
    write("1000 0 1000 100000 0 0 0 0 0 0");
    next();
    EXPECT_NEAR(next().idle, 100, 0.001); // it waited for 20 ms, in vain
    std::filesystem::remove(tree.root() / "proc/stat");
    machine.pass(2s);
    EXPECT_NEAR(next().idle, 100, 0.001);
    EXPECT_EQ(machine.failedSources(), "processor ");
    const std::string stat = (tree.root() / "proc/stat").string();
    for (const char* const still : {"0 0 0 0 0 0 0 0 0 0", "1000 0 1000 100000 0 0 0 0 0 0"}) {
        write(still); // as some containers have it
        next();
        machine.pass(2s);
        EXPECT_NEAR(next().idle, 100, 0.001);
        EXPECT_EQ(machine->failures().at(0).reason, stat + ": the ticks stand still");
    }
    machine.pass(2s); // what the outage hid is told afterwards
    write("1400 0 1000 101200 0 0 0 0 0 0");
    EXPECT_NEAR(next().user, 25, 0.1);
    EXPECT_EQ(machine.failedSources(), "");
}

/// By how many percentage points the shares of random loads are off at most.
double worstErrorAt(double age, std::uint64_t ticks) {
    TickScale scale(age, {0, 0, TickScale::highestPlanned(age), 0});
    std::mt19937 random(1);
    std::exponential_distribution<double> part(1);
    host_cpu_load_info before = scale.add({}, 0s);
    double worst = 0;
    for (int i = 0; i < 2000; ++i) {
        const double parts[] = {part(random), part(random) / 2, 4 * part(random), part(random) / 20};
        const double all = parts[0] + parts[1] + parts[2] + parts[3];
        const auto share = [&](double of) {
            return static_cast<std::uint64_t>(of / all * static_cast<double>(ticks));
        };
        const ProcessorTimes passed{share(parts[0]), share(parts[1]), share(parts[2]), share(parts[3])};
        const host_cpu_load_info now = scale.add(passed, 2s);
        const Load load = loadBetween(std::exchange(before, now), now);
        const double percent = 100 / static_cast<double>(sum(passed));
        worst = std::max({worst, std::abs(load.user - static_cast<double>(passed.user) * percent),
                          std::abs(load.system - static_cast<double>(passed.system) * percent),
                          std::abs(load.idle - static_cast<double>(passed.idle) * percent)});
    }
    return worst;
}

// The table of TickScale.hpp.
TEST(TickScale, KeepsItsPrecisionForYears) {
    constexpr double day = 86400, year = 365.25 * day;
    EXPECT_LE(worstErrorAt(day, 800), 0.0001);
    EXPECT_LE(worstErrorAt(day, 204800), 0.065);
    for (const double age : {year, 5 * year}) {
        EXPECT_LE(worstErrorAt(age, 800), 2.1);
        EXPECT_LE(worstErrorAt(age, 204800), 2.1);
    }
}

TEST(TickScale, NeverRunsOutWithinDecades) {
    // Each year's start, with all spent that could be, stands for the year.
    for (int age = 0; age < 20; ++age) {
        const double seconds = age * 365.25 * 86400;
        TickScale scale(seconds, {0, 0, TickScale::highestPlanned(seconds), 0});
        const host_cpu_load_info before = scale.add({}, 0s);
        EXPECT_LT(before.idle, 0xFFFFFFFFU) << age;
        const host_cpu_load_info after = scale.add({201, 101, 499, 0}, 2s);
        EXPECT_GT(after.user + after.system + after.idle, before.user + before.system + before.idle) << age;
        EXPECT_GE(after.idle, before.idle) << age;
    }
}

} // namespace
} // namespace vantor::tests
