// SPDX-License-Identifier: MIT
#include "pages/MemoryPage.hpp"

#include "FixedWorkload.hpp"
#include "SimulatedStore.hpp"
#include "platform/simulated/SimulatedMachine.hpp"

#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;
using platform::ApplicationUse;

namespace {

constexpr std::int64_t page = 4096;

class MemoryPageTest : public ::testing::Test {
protected:
    void figures(std::uint32_t free, std::uint32_t inactive, std::uint32_t wire, std::uint32_t cache,
                 std::uint32_t compressed) {
        m_machine.change([=](platform::SimulatedState& state) {
            state.pageSize = page;
            state.physicalMemory = 1000 * page;
            state.virtualMemory.free_count = free;
            state.virtualMemory.inactive_count = inactive;
            state.virtualMemory.wire_count = wire;
            state.virtualMemory.purgeable_count = cache;
            state.virtualMemory.compressor_page_count = compressed;
        });
    }
    /// The parts in pages; what the ring shows and the rest must be their sums.
    static std::vector<std::int64_t> parts() {
        const MemoryPage shown = memoryPage().value();
        std::vector<std::int64_t> pages;
        std::int64_t used = 0, all = 0;
        for (const MemoryPart& part : shown.parts) {
            pages.push_back(part.bytes / page);
            all += part.bytes;
            used += part.kind <= MemoryPartKind::compressed ? part.bytes : 0;
        }
        EXPECT_EQ(used, shown.used);
        EXPECT_EQ(all - used, shown.available);
        EXPECT_EQ(all, shown.total);
        return pages;
    }

    platform::SimulatedMachine m_machine;
    platform::SimulatedViewer m_viewer;
    FixedWorkload m_workload;

private:
    platform::Current<platform::Machine> m_currentMachine{m_machine};
    platform::Current<platform::Viewer> m_currentViewer{m_viewer};
    platform::Current<platform::Workload> m_currentWorkload{m_workload};
};

TEST_F(MemoryPageTest, PartsAddUpToTheRingWhateverTheKernelSays) {
    using Pages = std::vector<std::int64_t>;
    figures(400, 100, 50, 300, 20);
    EXPECT_EQ(parts(), (Pages{530, 50, 20, 0, 300, 100}));
    EXPECT_EQ(memoryPage()->fraction(), 0.6);
    m_viewer.change([](platform::SimulatedViewerState& state) {
        state.suite = storeHolding(storedFlag("isInactiveRAMHide"));
    });
    EXPECT_EQ(parts(), (Pages{430, 50, 20, 100, 300, 100})); // as the widget counts it
    figures(900, 100, 500, 2000, 500); // nothing is used, and everything is more than all
    EXPECT_EQ(parts(), (Pages{0, 0, 0, 100, 900, 0}));
    figures(0, 0, 900, 0, 900);
    EXPECT_EQ(parts(), (Pages{0, 900, 100, 0, 0, 0}));
    m_machine.change(
        [](platform::SimulatedState& state) { state.virtualMemoryResult = platform::KERN_FAILURE; });
    EXPECT_FALSE(memoryPage().has_value());
}

TEST_F(MemoryPageTest, ListsTheLargestFirstAndTheRest) {
    figures(400, 0, 0, 0, 0);
    m_workload.uses = {{.name = "small", .memory = 10 * page},
                       {.name = "session", .isService = true, .memory = 300 * page},
                       {.name = "swapped", .memory = 1 * page, .swap = 90 * page},
                       {.name = "large", .memory = 50 * page}};
    const MemoryPage shown = memoryPage().value();
    std::string order;
    for (const ApplicationUse& use : shown.applications) {
        order += use.name + ' ';
    }
    EXPECT_EQ(order, "swapped large small session ");
    EXPECT_EQ(shown.others, (600 - 361) * page);
    m_workload.uses.front().memory = 5000 * page; // shared pages may count twice: no negative rest
    EXPECT_EQ(memoryPage()->others, 0);
}

} // namespace
