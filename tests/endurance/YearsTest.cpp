// SPDX-License-Identifier: MIT
#include "FailingAllocation.hpp"
#include "TreeStage.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <iterator>
#include <random>

// Years of uptime in seconds: the clock jumps, and the kernel's figures move on as far as they would have.
namespace vantor::tests {
namespace {

constexpr double hour = 3600;
constexpr double year = 365.25 * 24 * hour;

/// A machine whose load changes with every step.
class LivingMachine {
public:
    explicit LivingMachine(KernelFigures& figures) : m_figures(figures) {}

    /// Moves everything on by a time; the busy share in percent.
    double pass(double seconds) {
        const double busy = m_share(m_random);
        const double ticks = seconds * 100 * static_cast<double>(m_figures.processors);
        const auto used = static_cast<std::uint64_t>(ticks * busy);
        m_figures.user += used / 2;
        m_figures.system += used / 4;
        m_figures.nice += used - used / 2 - used / 4;
        m_figures.idle += static_cast<std::uint64_t>(ticks) - used;
        m_figures.memoryAvailable = 1'000'000 + static_cast<std::uint64_t>(6'000'000 * m_share(m_random));
        for (auto& [name, bytes] : m_figures.links) {
            bytes += static_cast<std::uint64_t>(seconds * 300'000 * m_share(m_random));
        }
        return 100 * busy;
    }

private:
    KernelFigures& m_figures;
    std::mt19937 m_random{7};
    std::uniform_real_distribution<double> m_share{0.0, 1.0};
};

/// How many descriptors are open and how many threads run, together.
std::ptrdiff_t opened() {
    const auto entries = [](const char* folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    };
    return entries("/proc/self/fd") + entries("/proc/self/task");
}

TEST(Years, SixOfThemOnAThousandProcessorsShowTheTruthAndHoldNothing) {
    KernelFigures figures;
    figures.processors = 1024; // their ticks together wrap 32 bits twice a day
    TreeStage stage(figures);
    LivingMachine living(stage.figures);
    stage.load();
    stage.advance(1); // the first traffic report only takes note of the counters

    const AllocationWatch watch;
    const std::ptrdiff_t openedFirst = opened();
    std::ptrdiff_t held[2] = {}; // the most bytes in either half; in the first one caches fill up
    std::size_t falls = 0;
    double worst = 0;
    constexpr double step = 24 * hour;
    const int steps = static_cast<int>(6 * year / step);
    for (int i = 0; i < steps; ++i) {
        const std::uint64_t before = stage.figures.links[1].second;
        const double busy = living.pass(step);
        stage.advance(step);
        const ReportRecords& records = stage.controller->records();
        worst = std::max(worst, std::abs(100 - records.processor->idle - busy));
        const std::uint64_t now = stage.figures.links[1].second;
        const std::int64_t delta = records.network->receivedDelta;
        falls += delta < 0 ? 1 : 0;
        EXPECT_TRUE(delta < 0 || delta == static_cast<std::int64_t>(now - before)) << delta;
        EXPECT_EQ(records.network->totals.cards.receivedBytes, now);
        EXPECT_EQ(records.memory->at("free"),
                  static_cast<std::int64_t>(stage.figures.memoryAvailable / 4 * 4096));
        std::ptrdiff_t& most = held[2 * i / steps];
        most = std::max(most, watch.heldBytes());
    }
    EXPECT_LT(worst, 1.0) << "percentage points";
    EXPECT_EQ(falls, stage.figures.links[1].second >> 43) << "once in 8 TiB the entries begin again";
    EXPECT_LT(held[1], held[0] + 64) << "bytes";
    EXPECT_LE(opened(), openedFirst) << "descriptors and threads";
    EXPECT_EQ(stage.machine.failedSources(), "");
}

} // namespace
} // namespace vantor::tests
